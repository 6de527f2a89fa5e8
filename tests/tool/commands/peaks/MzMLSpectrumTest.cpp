#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include <tool/commands/peaks/Evaluated.h>
#include <tool/commands/peaks/MzMLSpectrum.h>
#include <tool/io/MzMLArray.h>
#include <tool/io/MzMLHead.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslTool::LoadedSpectrum;
using TslTool::MzMLTerms;
using Peaks = std::vector<TslTool::ReportedPeak>;

// A spectrum that was written, as an element that is read.
class Written {
 public:
  Written(const LoadedSpectrum& loaded, const Peaks& peaks,
          const TslTool::CvTerm& unit = TslTool::Cv::kCounts) {
    TslTool::ParseElement(text_ = TslTool::SpectrumElement(loaded, peaks, unit, 4), document_);
  }
  const std::string& Text() const { return text_; }
  pugi::xml_node Element() const { return document_.document_element(); }
  MzMLTerms Terms() const { return TslTool::MzMLGroups().TermsOf(Element()); }
  // Of a term; empty if there is none.
  std::string Value(const char* accession) const {
    const MzMLTerms terms = Terms();
    const TslTool::MzMLTerm* term = terms.Find(accession);
    return term ? term->value : "";
  }
  pugi::xml_node Array(const char* accession, const std::string& name = "") const {
    for (const pugi::xml_node& array : Element().child("binaryDataArrayList").children())
      for (const pugi::xml_node& param : array.children("cvParam"))
        if (param.attribute("accession").value() == std::string(accession) &&
            param.attribute("value").value() == name)
          return array;
    return {};
  }
  std::vector<double> Values(const char* accession, const std::string& name = "") const {
    const pugi::xml_node array = Array(accession, name);
    return TslTool::DecodeArray(array, TslTool::MzMLGroups().TermsOf(array), name,
                                Element().attribute("defaultArrayLength").as_uint())
        .values;
  }

 private:
  std::string text_;
  pugi::xml_document document_;
};

Peaks PeaksAt(const std::vector<double>& mz) {
  Peaks peaks;
  for (const double at : mz) {
    peaks.emplace_back();
    peaks.back().row.Mass = at;
    peaks.back().row.Ampl = 10.0 * at;
  }
  return peaks;
}

LoadedSpectrum Bare() {
  LoadedSpectrum loaded;
  loaded.scan = 9;
  loaded.rtSeconds = std::numeric_limits<double>::quiet_NaN();
  return loaded;
}

TEST(MzMLSpectrum, HoldsWhatTheTableHoldsBitForBit) {
  const LoadedSpectrum loaded = EvaluatedScan(5);
  const Peaks peaks = TslTool::ReportedPeaks(loaded);
  const Written written(loaded, peaks);
  const auto mz = written.Values("MS:1000514");
  const auto intensity = written.Values("MS:1000515");
  const auto ratio = written.Values("MS:1000517");
  const auto area = written.Values("MS:1000786", "area");
  const auto width = written.Values("MS:1000786", "width");
  const auto height = written.Values("MS:1000786", "height");
  ASSERT_GT(peaks.size(), 5U);
  for (std::size_t i = 0; i < peaks.size(); ++i) {
    EXPECT_EQ(mz.at(i), peaks[i].row.Mass);
    EXPECT_EQ(intensity.at(i), peaks[i].row.Ampl);
    EXPECT_EQ(ratio.at(i), peaks[i].row.Signal2Noise);
    EXPECT_EQ(area.at(i), peaks[i].area);
    EXPECT_EQ(width.at(i), peaks[i].row.Width);
    EXPECT_EQ(height.at(i), peaks[i].errors.height);
  }
}

TEST(MzMLSpectrum, HoldsTheStandardErrorsWithNaNWhereTheyAreNotKnown) {
  Peaks peaks = PeaksAt({100, 200});
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  peaks[0].errors = {1, 2, 3, 4, true};
  peaks[1].errors = {kNaN, kNaN, kNaN, kNaN};
  const Written written(Bare(), peaks);
  double expected = 1;
  for (const char* name : {"height", "mz_se", "amplitude_se", "area_se"}) {
    const auto values = written.Values("MS:1000786", name);
    ASSERT_EQ(values.size(), 2U) << name;
    EXPECT_EQ(values[0], expected++) << name;
    EXPECT_TRUE(std::isnan(values[1])) << name;
  }
  EXPECT_THAT(written.Values("MS:1000786", "counted"), ElementsAre(1, 0));
}

TEST(MzMLSpectrum, IsCentroidAndOfItsLevelAndPolarity) {
  const struct {
    int level, polarity;
    std::vector<std::string> terms;
    std::vector<std::string> none;
  } table[] = {
      {0, 0, {"MS:1000294", "MS:1000127"}, {"MS:1000511", "MS:1000579", "MS:1000129", "MS:1000130"}},
      {1, 1, {"MS:1000579", "MS:1000130"}, {"MS:1000580", "MS:1000129"}},
      {3, -1, {"MS:1000580", "MS:1000129"}, {"MS:1000579", "MS:1000130"}},
  };
  for (const auto& row : table) {
    LoadedSpectrum loaded = Bare();
    loaded.msLevel = row.level;
    loaded.polarity = row.polarity;
    const MzMLTerms terms = Written(loaded, {}).Terms();
    for (const auto& term : row.terms) EXPECT_TRUE(terms.Find(term)) << term;
    for (const auto& term : row.none) EXPECT_FALSE(terms.Find(term)) << term;
    EXPECT_EQ(TslTool::LevelOf(terms), row.level);
    EXPECT_EQ(TslTool::PolarityOf(terms), row.polarity);
    EXPECT_EQ(TslTool::RepresentationOf(terms), TslTool::Scan::Centroid);
  }
}

TEST(MzMLSpectrum, SumsUpItsPeaks) {
  Peaks peaks = PeaksAt({100, 200.5, 300});
  peaks[1].row.Ampl = 5000;
  const Written written(Bare(), peaks);
  EXPECT_EQ(written.Value("MS:1000285"), "9000");
  EXPECT_EQ(written.Value("MS:1000504"), "200.5");
  EXPECT_EQ(written.Value("MS:1000505"), "5000");
  EXPECT_EQ(written.Value("MS:1000528"), "100");
  EXPECT_EQ(written.Value("MS:1000527"), "300");
}

TEST(MzMLSpectrum, WithoutPeaksHasEmptyArraysAndNoBasePeak) {
  const Written written(Bare(), {});
  EXPECT_STREQ(written.Element().attribute("defaultArrayLength").value(), "0");
  EXPECT_EQ(written.Value("MS:1000285"), "0");
  for (const char* term : {"MS:1000504", "MS:1000505", "MS:1000527", "MS:1000528"})
    EXPECT_FALSE(written.Terms().Find(term)) << term;
  EXPECT_STREQ(written.Array("MS:1000514").attribute("encodedLength").value(), "0");
}

TEST(MzMLSpectrum, IntensitiesHaveTheUnitGiven) {
  for (const TslTool::CvTerm& unit : {TslTool::Cv::kCounts, TslTool::Cv::kCountsPerSecond}) {
    const Written written(Bare(), PeaksAt({100}), unit);
    EXPECT_EQ(written.Terms().Find("MS:1000505")->unit, unit.accession);
    const MzMLTerms terms = TslTool::MzMLGroups().TermsOf(written.Array("MS:1000515"));
    EXPECT_EQ(terms.Find("MS:1000515")->unit, unit.accession);
  }
}

TEST(MzMLSpectrum, TellsItsTimeInSecondsIfItHasOne) {
  LoadedSpectrum loaded = Bare();
  EXPECT_FALSE(Written(loaded, {}).Element().child("scanList").child("scan").first_child());
  loaded.rtSeconds = 16.031;
  const Written timed(loaded, {});
  const pugi::xml_node time = timed.Element().child("scanList").child("scan").child("cvParam");
  EXPECT_STREQ(time.attribute("accession").value(), "MS:1000016");
  EXPECT_STREQ(time.attribute("value").value(), "16.031");
  EXPECT_STREQ(time.attribute("unitAccession").value(), "UO:0000010");
}

TEST(MzMLSpectrum, PeaksAscendAndThoseThatFittedOnesStandForAreLeftOut) {
  Peaks peaks = PeaksAt({300, 100, 200, 150});
  peaks[2].row.IsOverlapped = true;
  const Written written(Bare(), peaks);
  EXPECT_THAT(written.Values("MS:1000514"), ElementsAre(100, 150, 300));
  EXPECT_THAT(written.Values("MS:1000515"), ElementsAre(1000, 1500, 3000));
}

TEST(MzMLSpectrum, APeakThatIsNotFiniteIsAnError) {
  for (const double bad : {std::numeric_limits<double>::infinity(), std::nan("")}) {
    Peaks peaks = PeaksAt({100, 200});
    peaks[1].row.Ampl = bad;
    EXPECT_THROW(TslTool::SpectrumElement(Bare(), peaks, TslTool::Cv::kCounts, 0), std::runtime_error);
    peaks = PeaksAt({100, bad});
    EXPECT_THROW(TslTool::SpectrumElement(Bare(), peaks, TslTool::Cv::kCounts, 0), std::runtime_error);
  }
}

TEST(MzMLSpectrum, KeepsAnIdThatTheFormatAllows) {
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
    const Written written(loaded, {});
    EXPECT_STREQ(written.Element().attribute("id").value(), row.written) << row.id;
    EXPECT_EQ(TslTool::IdFor(loaded), row.written);
    const bool isOther = *row.id != '\0' && std::string(row.written) != row.id;
    EXPECT_EQ(bool(written.Element().child("userParam")), isOther) << row.id;
  }
}

TEST(MzMLSpectrum, AnIdThatTheFormatDoesNotAllowIsTold) {
  LoadedSpectrum loaded = Bare();
  loaded.id = "five\x01";
  const Written written(loaded, {});
  const pugi::xml_node param = written.Element().child("userParam");
  EXPECT_STREQ(param.attribute("name").value(), "id in the source");
  EXPECT_STREQ(param.attribute("value").value(), "five\\x01");
}

TEST(MzMLSpectrum, TheIdIsItsFirstAttribute) {
  EXPECT_THAT(Written(Bare(), {}).Text(), testing::StartsWith("        <spectrum id=\"scan=9\" "));
}

}  // namespace
}  // namespace tests
