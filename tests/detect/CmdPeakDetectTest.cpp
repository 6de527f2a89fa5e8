#include <detect/PeakCurves.h>
#include <tslbl/curve/CurveEval.h>
#include <cmath>

using namespace TslBL;
using namespace tests;

namespace {

const std::wstring kUnable = L"Unable to peak detect.";

// Two peaks, the taller one first.
TestCurve TwoPeaks() { return PeakCurve("0 4 9 4 0 0 2 5 2 0"); }

TestCurve OnlyBetween(TestCurve curve, double start, double end) {
  curve.peakDetectParams.FullSearch = false;
  curve.peakDetectParams.SearchStart = start;
  curve.peakDetectParams.SearchEnd = end;
  return curve;
}

TestCurve Sorted(TestCurve curve) {
  curve.peakDetectParams.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  return curve;
}

// Fails with the message of the step and leaves all as it was.
void ExpectRefusal(TestCurve curve) {
  const TestCurve before = curve;
  EXPECT_EQ(Detect(curve), Failure(kUnable));
  EXPECT_TRUE(curve == before) << "the curve changed";
}

TestCurve Without(TestCurve curve, Curve::Status bit) {
  curve.status &= ~static_cast<std::uint32_t>(bit);
  return curve;
}

std::string Apexes(TestCurve curve) {
  EXPECT_TRUE(Detect(curve).ok);
  std::ostringstream out;
  for (const PeakInfo& p : curve.peaks) out << (&p == curve.peaks.data() ? "" : " ") << p.apexIdx;
  return out.str();
}

}  // namespace

TEST(CmdPeakDetect, RefusesASearchRangeThatIsNoNumber) {
  for (const auto& [start, end] : {std::pair<double, double>(NAN, 4.0), {4.0, NAN}, {NAN, NAN}}) {
    TestCurve curve = OnlyBetween(TwoPeaks(), start, end);
    EXPECT_EQ(Detect(curve), Failure(kUnable));
    EXPECT_FALSE(curve.CheckAllStatus(Curve::STATUS_PEAKS));
  }
}

TEST(CmdPeakDetect, FillsThePeakTable) {
  TestCurve curve = TwoPeaks();
  EXPECT_EQ(Detect(curve), Success("peaks"));
  EXPECT_EQ(Spans(curve.peaks), "0-2-4 5-7-9");
  EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_PEAKS));
}

TEST(CmdPeakDetect, NamesTheLargestPeaks) {
  TestCurve curve = PeakCurve("0 4 9 4 0 6 7 7 7 6 0 1 0");
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(curve.largestAreaIdx, 1);
  EXPECT_EQ(curve.largestMaxIdx, 0);
  EXPECT_EQ(curve.largestCentroidIdx, 0);
}

TEST(CmdPeakDetect, TheLargestCentroidAmplitudeMayBeAnotherPeaks) {
  TestCurve curve = PeakCurve("0 9 10 7 5 4 3 2 1 0 0 6 8.5 9 8.5 6 0");
  curve.peakDetectParams.Retention = 100.0;
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(curve.largestMaxIdx, 0);
  EXPECT_EQ(curve.largestCentroidIdx, 1);
}

TEST(CmdPeakDetect, EntersTheHistoryWithItsParameters) {
  TestCurve curve = TwoPeaks();
  ASSERT_TRUE(Detect(curve).ok);
  ASSERT_EQ(curve.evals.size(), 1u);
  EXPECT_TRUE(curve.evals[0] == CurveEval(curve.peakDetectParams));
}

TEST(CmdPeakDetect, StoresTheParametersOfTheCommandInTheCurve) {
  TestCurve curve = TwoPeaks();
  PeakDetectParams params = curve.peakDetectParams;
  params.MaxValley = 33.0;
  ASSERT_TRUE(RunCommand(params, curve).ok);
  EXPECT_EQ(curve.peakDetectParams, params);
}

TEST(CmdPeakDetect, ReplacesTheTableOfAnEarlierRun) {
  TestCurve curve = TwoPeaks();
  ASSERT_TRUE(Detect(curve).ok);
  curve.yAxis.assign(curve.yAxis.size(), 0.0);
  EXPECT_EQ(Detect(curve), Success("peaks"));
  EXPECT_TRUE(curve.peaks.empty());
  EXPECT_EQ(curve.largestAreaIdx, -1);
  EXPECT_EQ(curve.largestMaxIdx, -1);
  EXPECT_EQ(curve.largestCentroidIdx, -1);
  EXPECT_EQ(History(curve), "Peak Detect, Peak Detect");
}

TEST(CmdPeakDetect, FindingNothingOnAFlatCurveIsSuccess) {
  for (const double level : {0.0, 3.0}) {
    for (TestCurve curve :
         {PeakCurve(std::vector<double>(20, level)), Sorted(PeakCurve(std::vector<double>(20, level)))}) {
      EXPECT_EQ(Detect(curve), Success("peaks"));
      EXPECT_TRUE(curve.peaks.empty());
      EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_PEAKS));
      EXPECT_EQ(curve.largestAreaIdx, -1);
    }
  }
}

TEST(CmdPeakDetect, NeedsBothAxesBaselineAndNoise) {
  for (const auto bit : {Curve::STATUS_Y, Curve::STATUS_X, Curve::STATUS_BASELINE, Curve::STATUS_NOISE})
    ExpectRefusal(Without(TwoPeaks(), bit));
}

TEST(CmdPeakDetect, NeedsTheThresholdOnlyIfItIsInUse) {
  TestCurve curve = TwoPeaks();
  EXPECT_TRUE(Detect(curve).ok);
  curve.peakDetectParams.ThresholdInUse = true;
  ExpectRefusal(curve);
  curve.AddStatus(Curve::STATUS_THRESHOLD);
  EXPECT_TRUE(Detect(curve).ok);
}

TEST(CmdPeakDetect, RefusesAFrozenCurve) {
  for (const auto bit : {Curve::STATUS_OPD, Curve::STATUS_CSDECON}) {
    TestCurve curve = TwoPeaks();
    curve.AddStatus(bit);
    ExpectRefusal(curve);
  }
}

TEST(CmdPeakDetect, RefusesAnEmptyCurve) { ExpectRefusal(PeakCurve("")); }

TEST(CmdPeakDetect, RefusesBaselineOrNoiseOfAnotherLength) {
  TestCurve curve = TwoPeaks();
  curve.baseline.pop_back();
  ExpectRefusal(curve);
  curve = TwoPeaks();
  curve.noise.pop_back();
  ExpectRefusal(curve);
}

TEST(CmdPeakDetect, RefusesAnEmptySearchRange) {
  ExpectRefusal(OnlyBetween(TwoPeaks(), 6.0, 3.0));    // the wrong way round
  ExpectRefusal(OnlyBetween(TwoPeaks(), 3.2, 3.8));    // between two points
  ExpectRefusal(OnlyBetween(TwoPeaks(), -9.0, -1.0));  // before the curve
  ExpectRefusal(OnlyBetween(TwoPeaks(), 9.5, 20.0));   // behind it
}

TEST(CmdPeakDetect, ARefusalKeepsTheTableOfAnEarlierRun) {
  TestCurve curve = TwoPeaks();
  ASSERT_TRUE(Detect(curve).ok);
  ExpectRefusal(OnlyBetween(curve, 6.0, 3.0));
}

TEST(CmdPeakDetect, SearchesFromTheFirstPointAtTheStartToTheLastAtTheEnd) {
  EXPECT_EQ(SpansFound(OnlyBetween(TwoPeaks(), 5.0, 9.0)), "5-7-9");
  EXPECT_EQ(SpansFound(OnlyBetween(TwoPeaks(), 5.5, 8.0)), "6-7-8");
  EXPECT_EQ(SpansFound(OnlyBetween(TwoPeaks(), 0.0, 4.0)), "0-2-4");
  EXPECT_EQ(SpansFound(OnlyBetween(TwoPeaks(), -5.0, 3.9)), "0-2-3");
  EXPECT_EQ(SpansFound(OnlyBetween(TwoPeaks(), -5.0, 50.0)), "0-2-4 5-7-9");
  EXPECT_EQ(SpansFound(OnlyBetween(TwoPeaks(), 4.0, 4.0)), "");
}

// Two peaks with a valley between them, behind more points than 16 bits count.
TEST(CmdPeakDetect, FindsAndSearchesBeyond65536Points) {
  std::vector<double> y(70000, 0.0);
  for (const double value : Values("0 5 8 5 2 5 9 5 0")) y.push_back(value);
  TestCurve curve = PeakCurve(y);
  curve.peakDetectParams.MaxValley = 30.0;
  for (const TestCurve& either : {curve, Sorted(curve)}) {
    EXPECT_EQ(SpansFound(either), "70000-70002-70004 70004-70006-70008");
    EXPECT_EQ(SpansFound(OnlyBetween(either, 70004.0, 70008.0)), "70004-70006-70008");
  }
}

TEST(CmdPeakDetect, TheSearchLimitsAreIgnoredInAFullSearch) {
  TestCurve curve = OnlyBetween(TwoPeaks(), 6.0, 3.0);
  curve.peakDetectParams.FullSearch = true;
  EXPECT_EQ(SpansFound(curve), "0-2-4 5-7-9");
}

TEST(CmdPeakDetect, ExecuteRunsWhatIsMissingFirst) {
  TestCurve curve = CurveOf("1 1 1 1 5 9 5 1 1 1 1 1");
  curve.peakDetectParams.SNInUse = false;
  curve.peakDetectParams.ThresholdInUse = true;
  EXPECT_EQ(RunOn(ExecutePeakDetect, curve), Success("baseline noise threshold peaks"));
  EXPECT_EQ(History(curve), "Baseline, Noise, Threshold, Peak Detect");
}

TEST(CmdPeakDetect, ExecuteRunsNothingAgain) {
  TestCurve curve = TwoPeaks();
  EXPECT_EQ(RunOn(ExecutePeakDetect, curve), Success("peaks"));
  EXPECT_EQ(History(curve), "Peak Detect");
}

TEST(CmdPeakDetect, TheTypeOfRetentionTellsThePositionOfAPeak) {
  for (const auto algorithm : {PeakDetectParams::Sequential, PeakDetectParams::Sorted}) {
    for (const auto type : {PeakDetectParams::PeakTop, PeakDetectParams::CentroidTopPercent}) {
      TestCurve curve = TwoPeaks();
      curve.peakDetectParams.FindFeatureAlgorithm = algorithm;
      curve.peakDetectParams.RetentionType = type;
      ASSERT_TRUE(Detect(curve).ok);
      for (const PeakInfo& p : curve.peaks) EXPECT_EQ(p.useMax, type == PeakDetectParams::PeakTop);
    }
  }
}

TEST(CmdPeakDetect, KeepsTheAmplitudeOfTheApexAsDetected) {
  for (TestCurve curve : {TwoPeaks(), Sorted(TwoPeaks())}) {
    ASSERT_TRUE(Detect(curve).ok);
    ASSERT_EQ(curve.peaks.size(), 2u);
    EXPECT_EQ(curve.peaks[0].apexAmpl, 9.0);
    EXPECT_EQ(curve.peaks[1].apexAmpl, 5.0);
  }
}

TEST(CmdPeakDetect, AnUnknownAlgorithmIsTheSequentialOne) {
  TestCurve curve = PeakCurve("0 3 6 6 6 3 0");  // Sequential has the apex on the left
  curve.peakDetectParams.FindFeatureAlgorithm = static_cast<PeakDetectParams::FindFeatureAlgorithms>(7);
  EXPECT_EQ(SpansFound(curve), "0-2-6");
}

TEST(CmdPeakDetect, PeakCntKeepsTheTallestInTheOrderOfTheirApexes) {
  for (TestCurve curve : {PeakCurve("0 5 0 9 0 3 0 7 0 8 0"), Sorted(PeakCurve("0 5 0 9 0 3 0 7 0 8 0"))}) {
    curve.peakDetectParams.PeakCnt = 3;
    EXPECT_EQ(Apexes(curve), "1 3 5 7 9") << "not in use";
    curve.peakDetectParams.PeakCntInUse = true;
    EXPECT_EQ(Apexes(curve), "3 7 9");
    curve.peakDetectParams.PeakCnt = 5;
    EXPECT_EQ(Apexes(curve), "1 3 5 7 9");
  }
}

TEST(CmdPeakDetect, PeakCntKeepsTheFirstOfEqualPeaks) {
  std::vector<double> y = {0.0};
  for (int i = 0; i < 100; ++i) y.insert(y.end(), {5.0, 0.0});
  for (TestCurve curve : {PeakCurve(y), Sorted(PeakCurve(y))}) {
    curve.peakDetectParams.PeakCntInUse = true;
    curve.peakDetectParams.PeakCnt = 40;
    ASSERT_TRUE(Detect(curve).ok);
    ASSERT_EQ(curve.peaks.size(), 40u);
    EXPECT_EQ(curve.peaks.back().apexIdx, 79u);
  }
}

TEST(CmdPeakDetect, PeakCntBeyondTheNumberOfPeaksKeepsAll) {
  for (TestCurve curve : {TwoPeaks(), Sorted(TwoPeaks())}) {
    curve.peakDetectParams.PeakCntInUse = true;
    curve.peakDetectParams.PeakCnt = 0xFFFFFFFF;
    EXPECT_EQ(SpansFound(curve), "0-2-4 5-7-9");
  }
}

TEST(CmdPeakDetect, PeakCntCountsFeaturesWhateverSelectionThenDoes) {
  for (TestCurve curve : {PeakCurve("0 5 0 9 0 3 0 7 0 8 0"), Sorted(PeakCurve("0 5 0 9 0 3 0 7 0 8 0"))}) {
    curve.peakDetectParams.PeakCntInUse = true;
    curve.peakDetectParams.PeakCnt = 3;
    curve.peakDetectParams.SNInUse = true;
    curve.peakDetectParams.SN = 4;
    curve.noise[3] = 3.0;  // 9 over 3: too little, and no other peak moves up
    EXPECT_EQ(Apexes(curve), "7 9");
  }
}

TEST(CmdPeakDetect, PeakCntOfNoneLeavesNoneToTheSequentialRoute) {
  TestCurve curve = TwoPeaks();
  curve.peakDetectParams.PeakCntInUse = true;
  curve.peakDetectParams.PeakCnt = 0;
  EXPECT_EQ(Apexes(curve), "");
}

TEST(CmdPeakDetect, CurvesWithNumbersMissingAreNoCrash) {
  const double nan = std::nan("");
  for (const double odd : {nan, HUGE_VAL, -HUGE_VAL}) {
    for (TestCurve curve : {TwoPeaks(), Sorted(TwoPeaks())}) {
      curve.peakDetectParams.SNInUse = true;
      curve.yAxis[2] = curve.baseline[7] = curve.noise[0] = odd;
      EXPECT_TRUE(Detect(curve).ok);
      curve.yAxis.assign(curve.yAxis.size(), odd);
      EXPECT_TRUE(Detect(curve).ok);
    }
  }
}

TEST(CalcPeakValleyAmplitude, IsAPercentageOfTheHeight) {
  EXPECT_DOUBLE_EQ(CalcPeakValleyAmplitude(100.0, 20.0, 25.0), 40.0);
  EXPECT_DOUBLE_EQ(CalcPeakValleyAmplitude(100.0, 20.0, 0.0), 20.0);
  EXPECT_DOUBLE_EQ(CalcPeakValleyAmplitude(100.0, 20.0, 100.0), 100.0);
  EXPECT_DOUBLE_EQ(CalcPeakValleyAmplitude(-10.0, -30.0, 50.0), -20.0);
}

TEST(CalcPeakValleyAmplitude, IsThePeakItselfIfItDoesNotStandAboveTheValley) {
  EXPECT_EQ(CalcPeakValleyAmplitude(5.0, 5.0, 25.0), 5.0);
  EXPECT_EQ(CalcPeakValleyAmplitude(5.0, 8.0, 25.0), 5.0);
}

// The floor of the Sorted route saves work. Where it can be seen at all is where the limit
// that it stands for has an odd reference; the Sequential route then finds the peak.
namespace {

void ExpectFloored(const TestCurve& curve, const std::string& sequential, const std::string& sorted) {
  EXPECT_EQ(Apexes(curve), sequential);
  EXPECT_EQ(Apexes(Sorted(curve)), sorted);
}

// A tall edge, which is no peak for the Sorted route, and two peaks of 4 and 6.
TestCurve TallFirstPoint() { return PeakCurve("1000 0 4 0 6 0 0"); }

}  // namespace

TEST(AmplitudeFloor, IsTheFirstBaselineValue) {
  TestCurve curve = PeakCurve("0 0 4 0 6 0 0");
  curve.baseline[0] = 5.0;
  ExpectFloored(curve, "2 4", "4");
  curve.baseline[0] = 6.0;
  ExpectFloored(curve, "2 4", "4");
}

TEST(AmplitudeFloor, IsAThirdOfTheSignalToNoiseLimitInFirstNoise) {
  TestCurve curve = PeakCurve("0 0 4 0 6 0 0");
  curve.peakDetectParams.SNInUse = true;
  curve.peakDetectParams.SN = 4;
  curve.noise[0] = 3.75;  // 4 * 3.75 / 3 = 5
  ExpectFloored(curve, "2 4", "4");
  curve.noise[0] = 3.0;  // 4, which the lower peak just meets
  ExpectFloored(curve, "2 4", "2 4");
}

TEST(AmplitudeFloor, IsTheThreshold) {
  // The fitted top of a peak with its apex between two points is above both of them.
  TestCurve curve = PeakCurve("0 0 4 10 10 3.5 0 0");
  curve.AddStatus(Curve::STATUS_THRESHOLD);
  curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  curve.peakDetectParams.ThresholdInUse = true;
  curve.thresholdParams.Value = 10.2;
  ExpectFloored(curve, "3", "");
}

TEST(AmplitudeFloor, IsHalfTheRelativeAmplitudeOfTheTallestPoint) {
  TestCurve curve = TallFirstPoint();
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 1.0;  // 1000 * 0.01 * 1 * 0.5 = 5
  EXPECT_EQ(Apexes(Sorted(curve)), "4");
  curve.peakDetectParams.RelAmpl = 0.8;  // 4
  EXPECT_EQ(Apexes(Sorted(curve)), "2 4");
}

TEST(AmplitudeFloor, IsAQuarterOfTheRelativeAreaOfTheTallestPoint) {
  TestCurve curve = TallFirstPoint();
  curve.peakDetectParams.RelAreaInUse = true;
  curve.peakDetectParams.RelArea = 2.0;  // 1000 * 0.01 * 2 * 0.25 = 5
  EXPECT_EQ(Apexes(Sorted(curve)), "4");
  curve.peakDetectParams.RelArea = 1.6;  // 4
  EXPECT_EQ(Apexes(Sorted(curve)), "2 4");
}

TEST(AmplitudeFloor, IsATenthOfTheArea) {
  TestCurve curve = PeakCurve("0 0 3 4 4 4 4 4 4 4 4 4 4 4 4 4 4 3.5 0 0");
  curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  curve.peakDetectParams.AbsAreaInUse = true;
  curve.peakDetectParams.AbsArea = 41.0;
  ExpectFloored(curve, "3", "");
  curve.peakDetectParams.AbsArea = 40.0;
  ExpectFloored(curve, "3", "9");
}

TEST(AmplitudeFloor, LeavesOutTheLastPointOfTheRange) {
  TestCurve curve = PeakCurve("0 0 4 0 6 0 1000");
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 1.0;
  EXPECT_EQ(Apexes(Sorted(curve)), "2 4");
  curve = PeakCurve("0 0 4 0 6 0 1000 0");
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 1.0;
  EXPECT_EQ(Apexes(Sorted(OnlyBetween(curve, 0.0, 6.0))), "6");
}

TEST(AmplitudeFloor, TakesTheTallestPointFromTheSearchRange) {
  TestCurve curve = TallFirstPoint();
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 1.0;
  EXPECT_EQ(Apexes(Sorted(OnlyBetween(curve, 1.0, 6.0))), "2 4");
}

TEST(AmplitudeFloor, OnAPeakOfItsHeightDoesNotStopTheSearch) {
  TestCurve curve = PeakCurve("0 0 4 0 6 0 0");
  curve.baseline[0] = 4.0;
  EXPECT_EQ(Apexes(Sorted(curve)), "2 4");
}
