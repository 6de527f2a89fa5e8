#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include <random>
#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/commands/chrom/CurveRemarks.h>
#include <tool/commands/chrom/SimulatedCurves.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;
using TslTool::Chromatogram;
using TslTool::EvaluatedCurve;

EvaluatedCurve LeavingOut(std::size_t peaks) {
  EvaluatedCurve curve;
  curve.leftOut = peaks;
  return curve;
}

TEST(CurveRemarks, CountThePeaksThatAreLeftOutOfAllCurves) {
  EXPECT_EQ(TslTool::LeftOutNote({LeavingOut(0), LeavingOut(0)}), "");
  EXPECT_EQ(TslTool::LeftOutNote({LeavingOut(1)}),
            "1 peak left out that has no area above the level beside it");
  EXPECT_EQ(TslTool::LeftOutNote({LeavingOut(1), LeavingOut(2)}),
            "3 peaks left out that have no area above the level beside them");
}

TEST(CurveRemarks, QuietSilencesTheCount) {
  const Chromatogram curve = CleanCurve(
      {{150.0, 1000.0, 8.0}, {350.0, 600.0, 1.0}, {400.0, 40.0, 9.0}, {450.0, 600.0, 1.0}}, 600, 50.0);
  std::string text = "rt_s\tuv\n";
  for (std::size_t i = 0; i < curve.values.size(); ++i)
    text +=
        fmt::format("{}\t{}\n", curve.seconds[i], curve.values[i] + static_cast<double>(i * 7919 % 11) / 3.0);
  const TempFile file("uv.tsv", text);
  const Outcome told = RunTool({"chrom", file.Path(), "--min-width", "20"});
  EXPECT_THAT(told.err, HasSubstr(": 1 peak left out that has no area above the level beside it\n"));
  EXPECT_EQ(RunTool({"chrom", file.Path(), "--min-width", "20", "-q"}).err, "");
}

Chromatogram Noisy(const std::vector<SimulatedPeak>& peaks) {
  Chromatogram curve = CleanCurve(peaks, 600, 50.0);
  std::mt19937 random(1);
  AddNoise(curve, 1.0, random);
  return curve;
}

std::vector<std::string> WarningsOf(const Chromatogram& curve) {
  return TslTool::CurveWarnings({Evaluated(curve)});
}

TEST(CurveRemarks, WholePeaksNeedNoWarning) {
  EXPECT_THAT(WarningsOf(Noisy({{200.0, 1e5, 8.0}, {400.0, 100.0, 8.0}})), IsEmpty());
}

TEST(CurveRemarks, WarnOfATopThatTheDetectorCuts) {
  Chromatogram curve = Noisy({{300.0, 1000.0, 8.0}});
  for (double& value : curve.values) value = std::min(value, 600.0);
  EXPECT_THAT(WarningsOf(curve),
              ElementsAre(MatchesRegex(
                  "sim has a flat top of 4 points or more, as of a detector at its end, at 29..0 s; "
                  "heights and areas are too low there")));
}

TEST(CurveRemarks, WarnOfAPeakThatTheEndOfTheCurveCuts) {
  for (const double seconds : {5.0, 594.0})
    EXPECT_THAT(WarningsOf(Noisy({{300.0, 1000.0, 8.0}, {seconds, 500.0, 8.0}})),
                ElementsAre(MatchesRegex("sim ends above half the height of its peak at .* s; .*")))
        << seconds;
}

TEST(CurveRemarks, WarnOfADipWhereItIsDeepest) {
  EXPECT_THAT(
      WarningsOf(Noisy({{150.0, 1000.0, 8.0}, {400.0, -300.0, 8.0}})),
      ElementsAre(MatchesRegex("sim dips below its baseline at (39|40).* s; peaks beside it may be none")));
}

TEST(CurveRemarks, NameTheFirstCurveAndCountTheOthers) {
  Chromatogram curve = Noisy({{150.0, 1000.0, 8.0}, {400.0, -300.0, 8.0}});
  const EvaluatedCurve dipping = Evaluated(curve);
  curve.name = "first";
  EXPECT_THAT(TslTool::CurveWarnings({Evaluated(curve), dipping}),
              ElementsAre(StartsWith("first dips below")));
  EXPECT_THAT(TslTool::CurveWarnings({Evaluated(curve), dipping, dipping}),
              ElementsAre(testing::HasSubstr(", and 2 other curves, too; peaks beside")));
}

}  // namespace
}  // namespace tests
