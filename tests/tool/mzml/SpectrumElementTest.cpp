#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <tool/mzml/WrittenSpectrum.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslTool::LoadedSpectrum;
using TslTool::MzMLTerms;
using TslTool::SpectrumArrays;

namespace Cv = TslTool::Cv;

// Amplitudes of ten times the m/z.
SpectrumArrays ArraysAt(const std::vector<double>& mz, const TslTool::CvTerm& unit = Cv::kCounts) {
  SpectrumArrays arrays = {Cv::kCentroidSpectrum, mz, {}, unit};
  for (const double at : mz) arrays.intensity.push_back(10.0 * at);
  return arrays;
}

LoadedSpectrum Bare() {
  LoadedSpectrum loaded;
  loaded.scan = 9;
  loaded.rtSeconds = std::numeric_limits<double>::quiet_NaN();
  return loaded;
}

TEST(SpectrumElement, HoldsItsArraysBitForBit) {
  SpectrumArrays arrays = ArraysAt({100.1, 200.0 / 3.0 + 200.0});
  arrays.more.push_back({{Cv::kOtherArray, "width"}, {0.1, 1e-300}});
  const Written written(Bare(), arrays);
  EXPECT_EQ(written.Values("MS:1000514"), arrays.mz);
  EXPECT_EQ(written.Values("MS:1000515"), arrays.intensity);
  EXPECT_EQ(written.Values("MS:1000786", "width"), arrays.more[0].values);
  EXPECT_STREQ(written.Element().child("binaryDataArrayList").attribute("count").value(), "3");
}

TEST(SpectrumElement, IsOfItsLevelAndPolarity) {
  const struct {
    int level, polarity;
    std::vector<std::string> terms;
    std::vector<std::string> none;
  } table[] = {
      {0, 0, {"MS:1000294"}, {"MS:1000511", "MS:1000579", "MS:1000129", "MS:1000130"}},
      {1, 1, {"MS:1000579", "MS:1000130"}, {"MS:1000580", "MS:1000129"}},
      {3, -1, {"MS:1000580", "MS:1000129"}, {"MS:1000579", "MS:1000130"}},
  };
  for (const auto& row : table) {
    LoadedSpectrum loaded = Bare();
    loaded.msLevel = row.level;
    loaded.polarity = row.polarity;
    const MzMLTerms terms = Written(loaded, ArraysAt({})).Terms();
    for (const auto& term : row.terms) EXPECT_TRUE(terms.Find(term)) << term;
    for (const auto& term : row.none) EXPECT_FALSE(terms.Find(term)) << term;
    EXPECT_EQ(TslTool::LevelOf(terms), row.level);
    EXPECT_EQ(TslTool::PolarityOf(terms), row.polarity);
  }
}

TEST(SpectrumElement, IsOfTheRepresentationGiven) {
  for (const auto& [term, kind] : {std::pair(Cv::kCentroidSpectrum, TslTool::Scan::Centroid),
                                   std::pair(Cv::kProfileSpectrum, TslTool::Scan::Profile)}) {
    SpectrumArrays arrays = ArraysAt({100});
    arrays.representation = term;
    EXPECT_EQ(TslTool::RepresentationOf(Written(Bare(), arrays).Terms()), kind);
  }
}

TEST(SpectrumElement, SumsUpItsAmplitudes) {
  SpectrumArrays arrays = ArraysAt({100, 200.5, 300});
  arrays.intensity[1] = 5000;
  const Written written(Bare(), arrays);
  EXPECT_EQ(written.Value("MS:1000285"), "9000");
  EXPECT_EQ(written.Value("MS:1000504"), "200.5");
  EXPECT_EQ(written.Value("MS:1000505"), "5000");
  EXPECT_EQ(written.Value("MS:1000528"), "100");
  EXPECT_EQ(written.Value("MS:1000527"), "300");
}

TEST(SpectrumElement, WithoutPointsHasEmptyArraysAndNoBasePeak) {
  const Written written(Bare(), ArraysAt({}));
  EXPECT_STREQ(written.Element().attribute("defaultArrayLength").value(), "0");
  EXPECT_EQ(written.Value("MS:1000285"), "0");
  for (const char* term : {"MS:1000504", "MS:1000505", "MS:1000527", "MS:1000528"})
    EXPECT_FALSE(written.Terms().Find(term)) << term;
  EXPECT_STREQ(written.Array("MS:1000514").attribute("encodedLength").value(), "0");
}

TEST(SpectrumElement, IntensitiesHaveTheUnitGiven) {
  for (const TslTool::CvTerm& unit : {Cv::kCounts, Cv::kCountsPerSecond}) {
    const Written written(Bare(), ArraysAt({100}, unit));
    EXPECT_EQ(written.Terms().Find("MS:1000505")->unit, unit.accession);
    const MzMLTerms terms = TslTool::MzMLGroups().TermsOf(written.Array("MS:1000515"));
    EXPECT_EQ(terms.Find("MS:1000515")->unit, unit.accession);
  }
}

TEST(SpectrumElement, TellsItsTimeInSecondsIfItHasOne) {
  LoadedSpectrum loaded = Bare();
  EXPECT_FALSE(Written(loaded, ArraysAt({})).Element().child("scanList").child("scan").first_child());
  loaded.rtSeconds = 16.031;
  const Written timed(loaded, ArraysAt({}));
  const pugi::xml_node time = timed.Element().child("scanList").child("scan").child("cvParam");
  EXPECT_STREQ(time.attribute("accession").value(), "MS:1000016");
  EXPECT_STREQ(time.attribute("value").value(), "16.031");
  EXPECT_STREQ(time.attribute("unitAccession").value(), "UO:0000010");
}

TEST(SpectrumElement, APointThatIsNotFiniteIsAnError) {
  for (const double bad : {std::numeric_limits<double>::infinity(), std::nan("")}) {
    SpectrumArrays arrays = ArraysAt({100, 200});
    arrays.intensity[1] = bad;
    EXPECT_THROW(TslTool::SpectrumElement(Bare(), arrays, 0), std::runtime_error);
    arrays = ArraysAt({100, bad});
    EXPECT_THROW(TslTool::SpectrumElement(Bare(), arrays, 0), std::runtime_error);
  }
}

TEST(SpectrumElement, KeepsAnIdThatTheFormatAllows) {
  const struct {
    const char* id;
    const char* written;
  } table[] = {
      {"", "scan=9"},
      {"scan=5", "scan=5"},
      {"controllerType=0 controllerNumber=1 scan=5", "controllerType=0 controllerNumber=1 scan=5"},
      {"file=a&b<c>\"d\"", "file=a&b<c>\"d\""},
      {"5", "scan=9"},
      {"=5", "scan=9"},
      {"a=", "scan=9"},
      {"a=1  b=2", "scan=9"},
      {" a=1", "scan=9"},
      {"a=1 ", "scan=9"},
      {"a=1 b", "scan=9"},
      {"a=\x01", "scan=9"},
      {"a==1", "a==1"},
  };
  for (const auto& row : table) {
    LoadedSpectrum loaded = Bare();
    loaded.id = row.id;
    const Written written(loaded, ArraysAt({}));
    EXPECT_STREQ(written.Element().attribute("id").value(), row.written) << row.id;
    EXPECT_EQ(TslTool::IdFor(loaded), row.written);
    const bool isOther = *row.id != '\0' && std::string(row.written) != row.id;
    EXPECT_EQ(bool(written.Element().child("userParam")), isOther) << row.id;
  }
}

TEST(SpectrumElement, AnIdThatTheFormatDoesNotAllowIsTold) {
  LoadedSpectrum loaded = Bare();
  loaded.id = "five\x01";
  const Written written(loaded, ArraysAt({}));
  const pugi::xml_node param = written.Element().child("userParam");
  EXPECT_STREQ(param.attribute("name").value(), "id in the source");
  EXPECT_STREQ(param.attribute("value").value(), "five\\x01");
}

TEST(SpectrumElement, TheIdIsItsFirstAttribute) {
  EXPECT_THAT(Written(Bare(), ArraysAt({})).Text(), testing::StartsWith("        <spectrum id=\"scan=9\" "));
}

}  // namespace
}  // namespace tests
