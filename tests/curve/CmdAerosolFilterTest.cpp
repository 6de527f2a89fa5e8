#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/curve/AerosolFilter.h>
#include <tslbl/curve/Execute.h>
#include <limits>

using namespace TslBL;
using namespace tests;

namespace {

std::vector<double> Filtered(const std::string& y, std::uint32_t width = 1) {
  std::vector<double> values = Values(y);
  RemoveSpikes(values, width);
  return values;
}

}  // namespace

TEST(RemoveSpikes, ReplacesAnIsolatedSpikeByTheMeanOfItsNeighbours) {
  EXPECT_EQ(Filtered("0 0 100 0 0"), Values("0 0 0 0 0"));
  EXPECT_EQ(Filtered("1 2 100 4 5"), Values("1 2 3 4 5"));
  EXPECT_EQ(Filtered("0 100 0 0"), Values("0 0 0 0"));
}

TEST(RemoveSpikes, TakesNoPointBelow25) {
  EXPECT_EQ(Filtered("0 0 24 0 0"), Values("0 0 24 0 0"));
  EXPECT_EQ(Filtered("0 0 24.999 0 0"), Values("0 0 24.999 0 0"));
  EXPECT_EQ(Filtered("0 0 25 0 0"), Values("0 0 0 0 0"));
}

TEST(RemoveSpikes, TakesAPointAboveTenTimesTheMean) {
  EXPECT_EQ(Filtered("10 20 100 10 10"), Values("10 20 100 10 10"));
  EXPECT_EQ(Filtered("10 10 100 10 10"), Values("10 10 100 10 10"));
  EXPECT_EQ(Filtered("10 10 100.1 10 10"), Values("10 10 10 10 10"));
}

TEST(RemoveSpikes, NeverChangesTheFirstAndTheLastTwoPoints) {
  EXPECT_EQ(Filtered("100 0 0 0 0"), Values("100 0 0 0 0"));
  EXPECT_EQ(Filtered("0 0 0 100 0"), Values("0 0 0 100 0"));
  EXPECT_EQ(Filtered("0 0 0 0 100"), Values("0 0 0 0 100"));
}

TEST(RemoveSpikes, NeedsFourPoints) {
  EXPECT_EQ(Filtered("0 100 0"), Values("0 100 0"));
  EXPECT_EQ(Filtered(""), Values(""));
}

TEST(RemoveSpikes, LeavesTwoAdjacentSpikes) {
  EXPECT_EQ(Filtered("0 0 100 100 0 0 0"), Values("0 0 100 100 0 0 0"));
}

TEST(RemoveSpikes, LeavesAPointForTheSpikeBehindIt) {
  EXPECT_EQ(Filtered("0 -90 30 100 100 100"), Values("0 -90 30 100 100 100"));
}

TEST(RemoveSpikes, TakesTheTallerOfTwoIfTheMeanIsBelowATenthOfIt) {
  EXPECT_EQ(Filtered("0 0 500 100 0 0 0"), Values("0 0 500 100 0 0 0"));
  EXPECT_EQ(Filtered("0 0 1000 100 0 0 0"), Values("0 0 50 100 0 0 0"));
}

TEST(RemoveSpikes, SeesPointsThatItHasReplaced) {
  // Beside the 600 as it was the 100 would stay; beside the 50 it is a spike.
  EXPECT_EQ(Filtered("0 600 100 -40 0 0"), Values("0 50 5 -40 0 0"));
}

TEST(RemoveSpikes, OfWidthTwoTakesASpikeOfTwoPoints) {
  EXPECT_EQ(Filtered("0 0 100 100 0 0 0", 2), Values("0 0 0 0 0 0 0"));
  EXPECT_EQ(Filtered("0 0 100 100 0 0 0", 1), Values("0 0 100 100 0 0 0"));
}

TEST(RemoveSpikes, OfWidthTwoTakesAPointForWhatItsRightNeighbourIs) {
  // The mean is 6 for the first of the two: not it, but the second one, is above 60.
  EXPECT_EQ(Filtered("0 0 50 100 12 0 0", 2), Values("0 0 6 3 12 0 0"));
}

TEST(RemoveSpikes, OfAWidthRunsTheNarrowerFiltersFirst) {
  // For width 2 alone the second spike would cover the first.
  EXPECT_EQ(Filtered("0 0 100 0 100 0 0 0", 2), Values("0 0 0 0 0 0 0 0"));
  EXPECT_EQ(Filtered("0 0 100 0 0 0 0", 3), Values("0 0 0 0 0 0 0"));
}

TEST(RemoveSpikes, OfWidthZeroDoesNothing) { EXPECT_EQ(Filtered("0 0 100 0 0", 0), Values("0 0 100 0 0")); }

TEST(RemoveSpikes, OfAnyWidthStaysWithinTheCurve) {
  EXPECT_EQ(Filtered("0 0 100 0 0", 0xFFFFFFFF), Values("0 0 0 0 0"));
}

TEST(RemoveSpikes, LeavesWhatIsNoNumber) {
  std::vector<double> y = Values("0 0 100 0 0");
  y[3] = std::numeric_limits<double>::quiet_NaN();
  RemoveSpikes(y, 1);
  EXPECT_EQ(y[2], 100.0);
}

TEST(AerosolFilter, MarksTheAmplitudesAndEntersTheHistory) {
  TestCurve curve = CurveOf("0 0 100 0 0");
  const std::uint32_t status = curve.status;
  EXPECT_EQ(RunOn(DoAerosolFilter, curve), Success("yAxis"));
  EXPECT_EQ(curve.yAxis, Values("0 0 0 0 0"));
  EXPECT_EQ(History(curve), "Aerosol Filter");
  EXPECT_EQ(curve.status, status);
}

TEST(AerosolFilter, IsRecordedAlsoWhereItFindsNoSpike) {
  TestCurve curve = CurveOf("1 2 3 4");
  EXPECT_EQ(RunOn(DoAerosolFilter, curve), Success("yAxis"));
  EXPECT_EQ(History(curve), "Aerosol Filter");
}

TEST(AerosolFilter, DoesNothingWithFewerThanFourPoints) {
  for (const char* y : {"", "100", "0 100 0"}) {
    TestCurve curve = CurveOf(y);
    const TestCurve before = curve;
    EXPECT_EQ(RunOn(DoAerosolFilter, curve), Success(""));
    EXPECT_TRUE(curve == before) << y;
  }
}

TEST(AerosolFilter, NeedsNoStatus) {
  TestCurve curve = CurveOf("0 0 100 0 0");
  curve.status = 0;
  curve.xAxis.clear();
  EXPECT_EQ(RunCommand(CurveEval::AerosolFilter(), curve), Success("yAxis"));
  EXPECT_EQ(curve.yAxis, Values("0 0 0 0 0"));
}

TEST(AerosolFilter, WorksOnAFrozenCurve) {
  TestCurve curve = CurveOf("0 0 100 0 0");
  curve.AddStatus(Curve::STATUS_FROZEN);
  EXPECT_EQ(RunCommand(CurveEval::AerosolFilter(), curve), Success("yAxis"));
  EXPECT_EQ(curve.yAxis, Values("0 0 0 0 0"));
}

TEST(AerosolFilter, RecomputesNothing) {
  TestCurve curve = CurveOf("0 0 100 0 0");
  curve.AddStatus(static_cast<Curve::Status>(Curve::STATUS_BASELINE | Curve::STATUS_NOISE));
  curve.baseline = curve.noise = Values("7 7 7 7 7");
  RunOn(DoAerosolFilter, curve);
  EXPECT_EQ(History(curve), "Aerosol Filter");
  EXPECT_EQ(curve.baseline, Values("7 7 7 7 7"));
}

TEST(AerosolFilter, NeverWritesTheError) {
  TestCurve curve = CurveOf("0 0 100 0 0");
  Changed changed;
  std::wstring error = L"of before";
  EXPECT_TRUE(DoAerosolFilter(curve, changed, error));
  EXPECT_EQ(error, L"of before");
}
