#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/ToolRun.h>
#include <tool/io/MzMLReading.h>

namespace tests {
namespace {

using testing::HasSubstr;

// Three points of two mobilities each, one behind the other.
std::string SpectrumWith(const std::string& mobilityTerm, const Values& mobility) {
  const Values mz = {100, 100.1, 100.2, 100.05, 100.15, 100.25};
  return MzML(SpectrumOf(
      "scan=1", mz.size(),
      ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>({1, 5, 2, 1, 4, 1})) +
          ArrayOfText(Term(kFloat64) + Term(kPlain) + mobilityTerm, Base64(BytesOf<double>(mobility)))));
}

const Values kTwo = {1, 1, 1, 2, 2, 2};
const Values kOne = {1, 1, 1, 1, 1, 1};

constexpr const char* kSeveral =
    "holds points of several ion mobilities, which msconvert sums up with --filter \"scanSumming sumMs1=1\"";

TEST(IonMobility, PointsOfSeveralAreNoSpectrum) {
  for (const char* kind : {"MS:1002477", "MS:1002816", "MS:1002893", "MS:1003006", "MS:1003007", "MS:1003008",
                           "MS:1003153", "MS:1003154", "MS:1003155", "MS:1003156"})
    EXPECT_THAT(ErrorOf(SpectrumWith(Term(kind), kTwo)), HasSubstr(kSeveral)) << kind;
}

TEST(IonMobility, IsKnownByNameWhereThereIsNoTerm) {
  for (const char* term : {"<cvParam accession=\"MS:1000786\" name=\"non-standard data array\" "
                           "value=\"Ion Mobility\"/>",
                           "<cvParam accession=\"MS:1099999\" name=\"raw drift time array\" value=\"\"/>",
                           "<userParam name=\"inverse reduced ion mobility\" value=\"\"/>"})
    EXPECT_THAT(ErrorOf(SpectrumWith(term, kTwo)), HasSubstr(kSeveral)) << term;
}

TEST(IonMobility, PointsOfOneAreReadAsTheyAre) {
  EXPECT_EQ(ReadText(SpectrumWith(Term("MS:1003008"), kOne)).at(0).mz.size(), 6u);
}

TEST(IonMobility, OtherArraysArePassedOver) {
  EXPECT_EQ(ReadText(SpectrumWith(Term("MS:1000517"), kTwo)).at(0).mz.size(), 6u);
}

TEST(IonMobility, PeaksSkipsSuchSpectraAndTellsTheWayOut) {
  const TempFile file("a.mzML", SpectrumWith(Term("MS:1003008"), kTwo));
  const Outcome outcome = RunTool({"peaks", file.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "tslbl: " + file.Path() +
                ": holds no spectrum to evaluate: 1 of 1 spectra skipped: 1 of several ion "
                "mobilities (msconvert --filter \"scanSumming sumMs1=1\" sums them up) (first at "
                "line 5, spectrum \"scan=1\")\n");
}

}  // namespace
}  // namespace tests
