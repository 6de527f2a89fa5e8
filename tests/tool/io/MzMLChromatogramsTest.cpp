#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/MzMLChromatograms.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using TslTool::Traces;

constexpr const char* kTime = "MS:1000595";
constexpr const char* kMinutes = "unitAccession=\"UO:0000031\"";

std::string TimeArray(const Values& times, const std::string& unit = kMinutes) {
  return ArrayOfText(Term(kFloat64) + Term(kPlain) + Term(kTime, unit), Base64(BytesOf<double>(times)));
}

std::string ChromatogramOf(const std::string& id, std::size_t points, const std::string& arrays,
                           const std::string& more = Term("MS:1000235")) {
  return "<chromatogram index=\"0\" id=\"" + id + "\" defaultArrayLength=\"" + std::to_string(points) +
         "\">" + more + "<binaryDataArrayList count=\"2\">" + arrays +
         "</binaryDataArrayList></chromatogram>\n";
}

std::string Plain(const std::string& id, const Values& times, const Values& values) {
  return ChromatogramOf(id, times.size(), TimeArray(times) + ArrayOf(kIntensity, BytesOf<double>(values)));
}

std::string Document(const std::string& chromatograms) {
  return "<mzML><run id=\"r\"><chromatogramList count=\"1\">" + chromatograms +
         "</chromatogramList></run></mzML>";
}

Traces Read(const std::string& chromatograms, const std::string& only = "") {
  const TempFile file("a.mzML", Document(chromatograms));
  return TslTool::ReadChromatograms(TslTool::ByteSource(file.Path()), only);
}

std::string ErrorOf(const std::string& chromatograms, const std::string& only = "") {
  try {
    Read(chromatograms, only);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

TEST(MzMLChromatograms, AreReadWithTheirTimesInSeconds) {
  const Traces read = Read(Plain("TIC", {1.0, 2.0}, {5.0, 7.0}));
  ASSERT_THAT(read.all, SizeIs(1));
  EXPECT_EQ(read.all[0].name, "TIC");
  EXPECT_EQ(read.all[0].title, "total ion current");
  EXPECT_THAT(read.all[0].seconds, ElementsAre(60.0, 120.0));
  EXPECT_THAT(read.all[0].values, ElementsAre(5.0, 7.0));
}

TEST(MzMLChromatograms, OfSelectedReactionsTellTheirMasses) {
  const auto window = [](const std::string& name, const std::string& mz) {
    return "<" + name + "><isolationWindow>" + Term("MS:1000827", "value=\"" + mz + "\"") +
           "</isolationWindow></" + name + ">";
  };
  const std::string arrays = TimeArray({1.0, 2.0}) + ArrayOf(kIntensity, BytesOf<double>({5.0, 7.0}));
  const Traces read = Read(ChromatogramOf(
      "q1", 2, arrays, Term("MS:1001473") + window("precursor", "500.1") + window("product", "300.2")));
  EXPECT_EQ(read.all[0].title, "selected reaction 500.1 > 300.2");
}

TEST(MzMLChromatograms, AreChosenByIdOrNumber) {
  const std::string three = Plain("a", {1.0, 2.0}, {1.0, 1.0}) + Plain("b", {1.0, 2.0}, {2.0, 2.0}) +
                            Plain("0", {1.0, 2.0}, {3.0, 3.0});
  EXPECT_THAT(Read(three).all, SizeIs(3));
  EXPECT_EQ(Read(three, "b").all.at(0).name, "b");
  EXPECT_EQ(Read(three, "1").all.at(0).name, "b");
  EXPECT_EQ(Read(three, "0").all.at(0).name, "0");
  EXPECT_THAT(ErrorOf(three, "c"),
              HasSubstr("has no chromatogram \"c\": its 3 chromatograms are \"a\", \"b\", \"0\""));
  EXPECT_THAT(ErrorOf("", "c"), HasSubstr("holds no chromatogram"));
}

TEST(MzMLChromatograms, WithoutIntensitiesAreLeftOut) {
  const Traces read = Read(ChromatogramOf("p", 2, TimeArray({1.0, 2.0})));
  EXPECT_THAT(read.all, IsEmpty());
  EXPECT_THAT(read.warnings, ElementsAre(HasSubstr("chromatogram \"p\" without intensities, left out")));
}

TEST(MzMLChromatograms, WithoutAUnitAreInSecondsAndTold) {
  const std::string arrays = TimeArray({1.0, 2.0}, "") + ArrayOf(kIntensity, BytesOf<double>({5.0, 7.0}));
  const Traces read = Read(ChromatogramOf("TIC", 2, arrays));
  EXPECT_THAT(read.all[0].seconds, ElementsAre(1.0, 2.0));
  EXPECT_THAT(read.warnings, ElementsAre(HasSubstr("tells no unit of its times, taken as seconds")));
}

TEST(MzMLChromatograms, AreRefusedWhereTheyAreDamaged) {
  const auto of = [](std::size_t points, const Values& times, const Values& values) {
    return ErrorOf(
        ChromatogramOf("x", points, TimeArray(times) + ArrayOf(kIntensity, BytesOf<double>(values))));
  };
  EXPECT_THAT(of(3, {1.0, 2.0}, {1.0, 2.0}), HasSubstr("chromatogram \"x\": "));
  EXPECT_THAT(of(2, {2.0, 1.0}, {1.0, 2.0}),
              HasSubstr("the time of point 2, 60 s, does not come after the 120 s of the one before it"));
  EXPECT_THAT(of(2, {1.0, 2.0}, {1.0, std::nan("")}), HasSubstr("point 2 is not a finite number"));
}

}  // namespace
}  // namespace tests
