// Tests: InsertPeak.cpp.

#include <detect/PeakCurves.h>
#include <tslbl/detect/FindOnePeak.h>

using namespace TslBL;
using namespace tests;

namespace {

// Peaks of 4, 9 and 6 with their apexes at 2, 7 and 12.
const std::vector<double> kThree = Values("0 2 4 2 0 0 5 9 5 0 0 3 6 3 0");

std::array<std::int32_t, 3> Largest(const Curve& curve) {
  return {curve.largestAreaIdx, curve.largestMaxIdx, curve.largestCentroidIdx};
}
using Three = std::array<std::int32_t, 3>;

void ExpectNone(TestCurve curve, std::uint32_t curveIdx) {
  const TestCurve before = curve;
  EXPECT_EQ(FindOnePeak(curve, curveIdx), -1) << "at point " << curveIdx;
  EXPECT_TRUE(curve == before) << "the curve changed";
}

}  // namespace

TEST(FindOnePeak, FindsThePeakAroundAPoint) {
  for (const std::uint32_t point : {5u, 6u, 7u, 8u, 9u}) {
    TestCurve curve = PeakCurve(kThree);
    EXPECT_EQ(FindOnePeak(curve, point), 0) << point;
    EXPECT_EQ(Spans(curve.peaks), "5-7-9") << point;
  }
}

TEST(FindOnePeak, DescribesItAsPeakDetectionDoes) {
  TestCurve detected = PeakCurve(kThree);
  ASSERT_TRUE(Detect(detected).ok);
  TestCurve picked = PeakCurve(kThree);
  ASSERT_EQ(FindOnePeak(picked, 7), 0);
  EXPECT_EQ(Bits(picked.peaks.at(0)), Bits(detected.peaks.at(1)));
}

TEST(FindOnePeak, TheOnlyRowIsTheLargestInEverything) {
  TestCurve curve = PeakCurve(kThree);
  ASSERT_EQ(FindOnePeak(curve, 7), 0);
  EXPECT_EQ(Largest(curve), (Three{0, 0, 0}));
}

TEST(FindOnePeak, SetsNoStatusAndLeavesTheHistoryAlone) {
  TestCurve curve = PeakCurve(kThree);
  const std::uint32_t status = curve.status;
  ASSERT_EQ(FindOnePeak(curve, 7), 0);
  EXPECT_EQ(curve.status, status);
  EXPECT_EQ(History(curve), "");
}

TEST(FindOnePeak, KeepsTheTableInTheOrderOfApexes) {
  TestCurve curve = PeakCurve(kThree);
  EXPECT_EQ(FindOnePeak(curve, 7), 0);
  EXPECT_EQ(FindOnePeak(curve, 12), 1);
  EXPECT_EQ(FindOnePeak(curve, 2), 0);
  EXPECT_EQ(Spans(curve.peaks), "0-2-4 5-7-9 10-12-14");
}

TEST(FindOnePeak, MovesTheLargestRowsBehindItUp) {
  TestCurve curve = PeakCurve(kThree);
  ASSERT_EQ(FindOnePeak(curve, 7), 0);
  ASSERT_EQ(FindOnePeak(curve, 2), 0);
  EXPECT_EQ(Largest(curve), (Three{1, 1, 1}));
}

TEST(FindOnePeak, LeavesTheLargestRowsBeforeItWhereTheyAre) {
  TestCurve curve = PeakCurve(kThree);
  ASSERT_EQ(FindOnePeak(curve, 7), 0);
  ASSERT_EQ(FindOnePeak(curve, 12), 1);
  EXPECT_EQ(Largest(curve), (Three{0, 0, 0}));
}

TEST(FindOnePeak, ALargerRowTakesOver) {
  TestCurve curve = PeakCurve(kThree);
  ASSERT_EQ(FindOnePeak(curve, 2), 0);
  ASSERT_EQ(FindOnePeak(curve, 12), 1);
  EXPECT_EQ(Largest(curve), (Three{1, 1, 1}));
  ASSERT_EQ(FindOnePeak(curve, 7), 1);
  EXPECT_EQ(Largest(curve), (Three{1, 1, 1}));
}

TEST(FindOnePeak, EachOfTheLargestIsComparedForItself) {
  TestCurve curve = PeakCurve("0 4 9 4 0 6 7 7 7 6 0");
  ASSERT_EQ(FindOnePeak(curve, 2), 0);
  ASSERT_EQ(FindOnePeak(curve, 7), 1);
  EXPECT_EQ(Largest(curve), (Three{1, 0, 0}));
}

TEST(FindOnePeak, OfEqualRowsTheFirstIsTheLargestInWhateverOrderTheyCome) {
  for (const auto& [first, second] : {std::pair{2u, 7u}, {7u, 2u}}) {
    TestCurve curve = PeakCurve("0 4 9 4 0 0 4 9 4 0");
    ASSERT_EQ(FindOnePeak(curve, first), 0);
    ASSERT_GE(FindOnePeak(curve, second), 0);
    ASSERT_EQ(curve.peaks.at(0).area, curve.peaks.at(1).area);
    EXPECT_EQ(Largest(curve), (Three{0, 0, 0}));
  }
}

TEST(FindOnePeak, ARowOfAnApexThatIsThereComesBeforeTheOldOne) {
  TestCurve curve = PeakCurve(kThree);
  ASSERT_EQ(FindOnePeak(curve, 7), 0);
  ASSERT_EQ(FindOnePeak(curve, 2), 0);
  EXPECT_EQ(FindOnePeak(curve, 7), 1);
  EXPECT_EQ(Spans(curve.peaks), "0-2-4 5-7-9 5-7-9");
  EXPECT_EQ(Largest(curve), (Three{1, 1, 1}));
}

TEST(FindOnePeak, ALargestThatIsNoRowIsReplaced) {
  TestCurve curve = PeakCurve(kThree);
  ASSERT_EQ(FindOnePeak(curve, 7), 0);
  for (const std::int32_t none : {-1, 1, 5}) {
    TestCurve odd = curve;
    odd.largestAreaIdx = odd.largestMaxIdx = odd.largestCentroidIdx = none;
    ASSERT_EQ(FindOnePeak(odd, 2), 0);
    EXPECT_EQ(Largest(odd), (Three{0, 0, 0})) << none;
  }
}

TEST(FindOnePeak, AppliesNoSelection) {
  TestCurve curve = PeakCurve(kThree);
  PeakDetectParams& p = curve.peakDetectParams;
  p.SNInUse = p.AbsAreaInUse = p.FWHMGTInUse = p.PeakCntInUse = true;
  p.SN = 1000;
  p.AbsArea = p.FWHMGT = 1e9;
  p.PeakCnt = 0;
  EXPECT_EQ(FindOnePeak(curve, 7), 0);
}

// The taller neighbour is in the way and is found first.
TEST(FindOnePeak, CountsNoPeaks) {
  TestCurve curve = PeakCurve("0 8 9 8 5 6 7 20 30 40 20 0");
  curve.peakDetectParams.PeakCntInUse = true;
  curve.peakDetectParams.PeakCnt = 1;
  EXPECT_EQ(FindOnePeak(curve, 2), 0);
  EXPECT_EQ(Spans(curve.peaks), "0-2-4");
}

TEST(FindOnePeak, SearchesOutsideTheSearchRange) {
  TestCurve curve = PeakCurve(kThree);
  curve.peakDetectParams.FullSearch = false;
  curve.peakDetectParams.SearchStart = 10.0;
  EXPECT_EQ(FindOnePeak(curve, 2), 0);
}

TEST(FindOnePeak, GivesThePeakThatSpansAShoulder) {
  TestCurve curve = PeakCurve("0 9 8 7 8 20 8 0");
  EXPECT_EQ(FindOnePeak(curve, 1), 0);
  EXPECT_EQ(Spans(curve.peaks), "0-5-7");
}

TEST(FindOnePeak, EndsAtAValley) {
  TestCurve curve = PeakCurve("0 8 9 5 2 4 5 9 10 5 0");
  EXPECT_EQ(FindOnePeak(curve, 2), 0);
  EXPECT_EQ(Spans(curve.peaks), "0-2-4");
}

TEST(FindOnePeak, FindsNoneWhereTheCurveRisesToItsEnd) { ExpectNone(PeakCurve("0 1 2 3 4 5"), 3); }
TEST(FindOnePeak, FindsNoneOnAFlatCurve) { ExpectNone(PeakCurve("3 3 3 3 3"), 2); }
TEST(FindOnePeak, FindsNoneBelowTheBaseline) {
  TestCurve curve = PeakCurve(kThree);
  curve.baseline.assign(kThree.size(), 20.0);
  ExpectNone(curve, 7);
}
TEST(FindOnePeak, FindsNoneBelowZero) {
  ExpectNone(PeakCurve(Values("-9 -9 -5 -9 -9"), std::vector<double>(5, -8.0)), 2);
}
TEST(FindOnePeak, FindsNoneThatDoesNotReachThePoint) { ExpectNone(PeakCurve("0 0 0 0 1 5 1 0"), 1); }
TEST(FindOnePeak, FindsNoneBehindTheCurve) { ExpectNone(PeakCurve("0 2 4 2 0"), 5); }
TEST(FindOnePeak, FindsNoneOnAnEmptyCurve) { ExpectNone(PeakCurve(""), 0); }
TEST(FindOnePeak, FindsNoneWithABaselineOfAnotherLength) {
  TestCurve curve = PeakCurve(kThree);
  curve.baseline.pop_back();
  ExpectNone(curve, 7);
}

TEST(FindOnePeak, RunsBaselineAndNoiseIfTheyAreMissing) {
  TestCurve curve = CurveOf("1 1 1 1 5 9 5 1 1 1 1 1");
  curve.baselineParams.Auto = false;
  curve.baselineParams.ManVal = 2.0;
  EXPECT_EQ(FindOnePeak(curve, 5), 0);
  EXPECT_EQ(History(curve), "Baseline, Noise");
  EXPECT_EQ(curve.baseline, std::vector<double>(12, 2.0));
  EXPECT_FALSE(curve.CheckAllStatus(Curve::STATUS_PEAKS));
}

TEST(FindOnePeak, FailsWhereBaselineFails) {
  TestCurve curve = CurveOf(kThree);
  curve.AddStatus(Curve::STATUS_OPD);
  ExpectNone(curve, 7);
}

TEST(FindOnePeak, WorksOnAFrozenCurveThatHasBaselineAndNoise) {
  TestCurve curve = PeakCurve(kThree);
  curve.AddStatus(Curve::STATUS_OPD);
  EXPECT_EQ(FindOnePeak(curve, 7), 0);
}
