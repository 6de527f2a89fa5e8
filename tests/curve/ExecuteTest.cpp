// The steps, their preconditions, and the cascades that bring what depends on a step up to
// date.
#include <gtest/gtest.h>

#include <curve/FailingAllocations.h>
#include <curve/TestCurve.h>
#include <tslbl/curve/Execute.h>
#include <cmath>
#include <new>

using namespace TslBL;
using namespace tests;

namespace {

constexpr std::uint32_t kAxes = Curve::STATUS_Y | Curve::STATUS_X;
constexpr std::uint32_t T = Curve::STATUS_THRESHOLD;
constexpr std::uint32_t B = Curve::STATUS_BASELINE;
constexpr std::uint32_t N = Curve::STATUS_NOISE;
constexpr std::uint32_t P = Curve::STATUS_PEAKS;

using Function = bool (*)(Curve&, Changed&, std::wstring&);

std::vector<double> TwoPeaks() {
  std::vector<double> y;
  for (const double x : Count(120)) {
    const double a = (x - 40.0) / 4.0;
    const double b = (x - 85.0) / 5.0;
    y.push_back(10.0 + std::fmod(x * 7.0, 3.0) + 500.0 * std::exp(-a * a) + 200.0 * std::exp(-b * b));
  }
  return y;
}

// A curve on which everything has run once, with an empty history and the status that is
// asked for.
TestCurve Evaluated(std::uint32_t status, bool thresholdInUse = false) {
  TestCurve curve = CurveOf(TwoPeaks());
  Changed changed;
  std::wstring error;
  EXPECT_TRUE(ExecutePeakDetect(curve, changed, error));
  curve.evals.clear();
  curve.thresholdParams.Value = 12.0;
  curve.peakDetectParams.ThresholdInUse = thresholdInUse;
  curve.status = kAxes | status;
  return curve;
}

struct CascadeRow {
  std::uint32_t status;  // before
  const char* history;   // after
  const char* changed;
};

void CheckCascade(Function function, std::uint32_t adds, const std::vector<CascadeRow>& rows,
                  bool thresholdInUse = false) {
  for (const auto& [status, history, changed] : rows) {
    TestCurve curve = Evaluated(status, thresholdInUse);
    EXPECT_EQ(RunOn(function, curve), Success(changed)) << history;
    EXPECT_EQ(History(curve), history);
    EXPECT_EQ(curve.status, kAxes | status | adds) << history;
  }
}

struct Refusal {
  const char* why;
  void (*spoil)(TestCurve& curve);
};

constexpr Refusal kFrozenByOPD = {"frozen by overlap peaks",
                                  [](TestCurve& c) { c.AddStatus(Curve::STATUS_OPD); }};
constexpr Refusal kFrozenByCSDecon = {"frozen by charge states",
                                      [](TestCurve& c) { c.AddStatus(Curve::STATUS_CSDECON); }};
constexpr Refusal kNoAmplitudes = {"no amplitudes", [](TestCurve& c) { c.yAxis.clear(); }};
constexpr Refusal kNoAxis = {"no axis", [](TestCurve& c) { c.xAxis.clear(); }};
constexpr Refusal kNoStatusY = {"no STATUS_Y", [](TestCurve& c) { c.status &= ~Curve::STATUS_Y; }};
constexpr Refusal kNoStatusX = {"no STATUS_X", [](TestCurve& c) { c.status &= ~Curve::STATUS_X; }};
constexpr Refusal kNoBaseline = {"no STATUS_BASELINE", [](TestCurve& c) { c.status &= ~B; }};
constexpr Refusal kNoNoise = {"no STATUS_NOISE", [](TestCurve& c) { c.status &= ~N; }};
constexpr Refusal kNoThreshold = {"no STATUS_THRESHOLD", [](TestCurve& c) { c.status &= ~T; }};

// Each reason alone makes the step fail with its message, and nothing is changed.
template <class Step>
void CheckRefusals(Step step, const wchar_t* message, const std::vector<Refusal>& reasons) {
  for (const auto& [why, spoil] : reasons) {
    TestCurve curve = Evaluated(T | B | N | P);
    spoil(curve);
    const TestCurve before = curve;
    EXPECT_EQ(RunOn(step, curve), Failure(message)) << why;
    EXPECT_TRUE(curve == before) << why;
  }
}

CurveEval PeakDetectCommand() { return CurveEval(Evaluated(0).peakDetectParams); }

}  // namespace

TEST(ExecuteSmooth, IsRefused) {
  CheckRefusals(ExecuteSmooth, L"Unable to smooth.",
                {kFrozenByOPD, kFrozenByCSDecon, kNoAmplitudes, kNoAxis, kNoStatusY, kNoStatusX});
}
TEST(ExecuteBaseline, IsRefused) {
  CheckRefusals(ExecuteBaseline, L"Unable to baseline.",
                {kFrozenByOPD, kFrozenByCSDecon, kNoAmplitudes, kNoAxis, kNoStatusY});
}
TEST(ExecuteBaselineSubtract, IsRefused) {
  CheckRefusals(ExecuteBaselineSubtract, L"Unable to subtract baseline.",
                {kFrozenByOPD, kFrozenByCSDecon, kNoBaseline});
}
TEST(ExecuteNoise, IsRefused) {
  CheckRefusals(ExecuteNoise, L"Unable to noise.",
                {kFrozenByOPD, kFrozenByCSDecon, kNoAmplitudes, kNoAxis, kNoStatusY});
}
TEST(ExecuteThreshold, IsRefused) {
  CheckRefusals(ExecuteThreshold, L"Unable to threshold.", {kFrozenByOPD, kFrozenByCSDecon});
}
TEST(ExecuteThresholdSubtract, IsRefused) {
  CheckRefusals(ExecuteThresholdSubtract, L"Unable to subtract threshold.",
                {kFrozenByOPD, kFrozenByCSDecon, kNoThreshold});
}
TEST(PeakDetectCommand, IsRefused) {
  CheckRefusals(
      PeakDetectCommand(), L"Unable to peak detect.",
      {kFrozenByOPD, kFrozenByCSDecon, kNoAmplitudes, kNoStatusY, kNoStatusX, kNoBaseline, kNoNoise});
}
TEST(ExecutePeakDetect, IsRefused) {
  CheckRefusals(ExecutePeakDetect, L"Unable to peak detect.",
                {kFrozenByOPD, kFrozenByCSDecon, kNoAmplitudes, kNoStatusY, kNoStatusX});
}

TEST(PeakDetectCommand, IsRefusedIfItUsesAThresholdThatIsNotSet) {
  PeakDetectParams params;
  params.ThresholdInUse = true;
  TestCurve curve = Evaluated(B | N);
  EXPECT_EQ(RunCommand(params, curve), Failure(L"Unable to peak detect."));
  EXPECT_EQ(History(curve), "");
  curve.AddStatus(Curve::STATUS_THRESHOLD);
  EXPECT_EQ(RunCommand(params, curve), Success("peaks"));
}

TEST(PeakDetectCommand, IsRefusedForAnEmptySearchRange) {
  PeakDetectParams params;
  params.FullSearch = false;
  const struct { double start, end; } rows[] = {{50.0, 40.0}, {200.0, 300.0}, {-20.0, -10.0}, {50.25, 50.75}};
  for (const auto& [start, end] : rows) {
    params.SearchStart = start;
    params.SearchEnd = end;
    TestCurve curve = Evaluated(B | N | P);
    EXPECT_EQ(RunCommand(params, curve), Failure(L"Unable to peak detect.")) << start;
    EXPECT_EQ(curve.peaks, Evaluated(0).peaks) << start;
  }
}

TEST(StepsThatNeedNoPoints, SucceedOnAnEmptyCurve) {
  TestCurve curve;
  EXPECT_EQ(RunOn(ExecuteThreshold, curve), Success("threshold"));
  EXPECT_EQ(RunOn(ExecuteThresholdSubtract, curve), Success("yAxis threshold"));
  curve.AddStatus(Curve::STATUS_BASELINE);
  EXPECT_EQ(RunOn(ExecuteBaselineSubtract, curve), Success("yAxis baseline"));
}

TEST(StepsOnAxesOfTwoLengths, AreRefusedWhereTheyReadX) {
  for (const Function function : {ExecuteSmooth, ExecuteNoise, ExecutePeakDetect}) {
    TestCurve curve = CurveOf("1 2 3", "1 2");
    curve.noiseParams.AlgAuto = NoiseParams::AutoAlgs::Dispersion;
    EXPECT_FALSE(RunOn(function, curve).ok);
  }
}

TEST(StepsOnAxesOfTwoLengths, RunWhereTheyReadNoX) {
  for (const Function function : {ExecuteBaseline, ExecuteNoise}) {
    TestCurve curve = CurveOf("1 2 3", "1 2");
    EXPECT_TRUE(RunOn(function, curve).ok);
  }
}

TEST(ExecuteSmooth, RunsBaselineNoiseAndPeaksAgain) {
  CheckCascade(ExecuteSmooth, Curve::STATUS_SMOOTHED,
               {{0, "Smooth", "yAxis"},
                {T, "Smooth", "yAxis"},
                {B, "Smooth, Baseline", "yAxis baseline"},
                {N, "Smooth, Noise", "yAxis noise"},
                {B | N, "Smooth, Baseline, Noise", "yAxis baseline noise"},
                {T | B | N | P, "Smooth, Baseline, Noise, Peak Detect", "yAxis baseline noise peaks"}});
}

TEST(ExecuteBaseline, RunsPeaksAgain) {
  CheckCascade(ExecuteBaseline, B,
               {{0, "Baseline", "baseline"},
                {N, "Baseline", "baseline"},
                {B | N, "Baseline", "baseline"},
                {N | P, "Baseline, Peak Detect", "baseline peaks"},
                {B | N | P, "Baseline, Peak Detect", "baseline peaks"}});
}

TEST(ExecuteBaselineSubtract, RunsNoiseAndPeaksAgain) {
  CheckCascade(ExecuteBaselineSubtract, 0,
               {{B, "Baseline Subtract", "yAxis baseline"},
                {B | N, "Baseline Subtract, Noise", "yAxis baseline noise"},
                {B | N | P, "Baseline Subtract, Noise, Peak Detect", "yAxis baseline noise peaks"}});
}

TEST(ExecuteNoise, RunsPeaksAgain) {
  CheckCascade(ExecuteNoise, N,
               {{0, "Noise", "noise"},
                {B, "Noise", "noise"},
                {B | N, "Noise", "noise"},
                {B | P, "Noise, Peak Detect", "noise peaks"},
                {B | N | P, "Noise, Peak Detect", "noise peaks"}});
}

TEST(ExecuteThreshold, RunsNothingAgainIfPeaksDoNotUseIt) {
  CheckCascade(ExecuteThreshold, T, {{0, "Threshold", "threshold"}, {B | N | P, "Threshold", "threshold"}});
}

TEST(ExecuteThreshold, RunsPeaksAgainIfTheyUseIt) {
  CheckCascade(ExecuteThreshold, T,
               {{0, "Threshold", "threshold"},
                {B | N, "Threshold", "threshold"},
                {B | N | P, "Threshold, Peak Detect", "threshold peaks"}},
               true);
}

TEST(ExecuteThresholdSubtract, RunsBaselineNoiseAndPeaksAgain) {
  for (const bool inUse : {false, true})
    CheckCascade(ExecuteThresholdSubtract, 0,
                 {{T, "Threshold Subtract", "yAxis threshold"},
                  {T | B, "Threshold Subtract, Baseline", "yAxis baseline threshold"},
                  {T | N, "Threshold Subtract, Noise", "yAxis noise threshold"},
                  {T | B | N, "Threshold Subtract, Baseline, Noise", "yAxis baseline noise threshold"},
                  {T | B | N | P, "Threshold Subtract, Baseline, Noise, Peak Detect",
                   "yAxis baseline noise threshold peaks"}},
                 inUse);
}

TEST(ExecutePeakDetect, RunsFirstWhatHasNotRun) {
  CheckCascade(ExecutePeakDetect, B | N | P,
               {{0, "Baseline, Noise, Peak Detect", "baseline noise peaks"},
                {T, "Baseline, Noise, Peak Detect", "baseline noise peaks"},
                {B, "Noise, Peak Detect", "noise peaks"},
                {N, "Baseline, Peak Detect", "baseline peaks"},
                {B | N, "Peak Detect", "peaks"},
                {B | N | P, "Peak Detect", "peaks"}});
}

TEST(ExecutePeakDetect, RunsTheThresholdFirstIfItIsInUse) {
  CheckCascade(ExecutePeakDetect, T | B | N | P,
               {{0, "Baseline, Noise, Threshold, Peak Detect", "baseline noise threshold peaks"},
                {B | N, "Threshold, Peak Detect", "threshold peaks"},
                {T, "Baseline, Noise, Peak Detect", "baseline noise peaks"},
                {T | B | N, "Peak Detect", "peaks"}},
               true);
}

TEST(Cascade, UsesTheParametersOfTheCurve) {
  TestCurve curve = Evaluated(B | N | P);
  curve.smoothParams.Passes = 2;
  curve.baselineParams.SegSize = 60;
  curve.noiseParams.SegSize = 70;
  curve.peakDetectParams.SN = 7;
  EXPECT_TRUE(RunOn(ExecuteSmooth, curve).ok);
  EXPECT_EQ(curve.evals,
            (std::vector<CurveEval>{CurveEval(curve.smoothParams), CurveEval(curve.baselineParams),
                                    CurveEval(curve.noiseParams), CurveEval(curve.peakDetectParams)}));
}

TEST(Cascade, EqualsItsStepsRunOneByOne) {
  TestCurve curve = Evaluated(B | N | P);
  TestCurve oneByOne = curve;
  EXPECT_TRUE(RunOn(ExecuteSmooth, curve).ok);
  for (const CurveEval& eval : curve.evals) EXPECT_TRUE(RunOn(eval, oneByOne).ok);
  EXPECT_TRUE(curve == oneByOne);
}

TEST(Cascade, EndsWithTheMessageOfTheStepThatFailsAndKeepsWhatRan) {
  const auto badBaseline = [](TestCurve& c) { c.baselineParams.Alg = static_cast<BaselineParams::Algs>(3); };
  const auto badNoise = [](TestCurve& c) { c.noiseParams.AlgAuto = static_cast<NoiseParams::AutoAlgs>(4); };
  const auto badPeaks = [](TestCurve& c) { c.peakDetectParams.ThresholdInUse = true; };
  const struct {
    Function function;
    std::uint32_t status;
    void (*spoil)(TestCurve&);
    const wchar_t* error;
    const char* history;
    const char* changed;
  } rows[] = {
      {ExecuteSmooth, B | N | P, badBaseline, L"Unable to baseline.", "Smooth", "yAxis"},
      {ExecuteSmooth, B | N | P, badNoise, L"Unable to noise.", "Smooth, Baseline", "yAxis baseline"},
      {ExecuteSmooth, B | N | P, badPeaks, L"Unable to peak detect.", "Smooth, Baseline, Noise",
       "yAxis baseline noise"},
      {ExecuteBaseline, B | N | P, badPeaks, L"Unable to peak detect.", "Baseline", "baseline"},
      {ExecuteBaseline, P, badNoise, L"Unable to peak detect.", "Baseline", "baseline"},
      {ExecuteBaselineSubtract, B | N | P, badNoise, L"Unable to noise.", "Baseline Subtract",
       "yAxis baseline"},
      {ExecuteBaselineSubtract, B | N | P, badPeaks, L"Unable to peak detect.", "Baseline Subtract, Noise",
       "yAxis baseline noise"},
      {ExecuteNoise, B | N | P, badPeaks, L"Unable to peak detect.", "Noise", "noise"},
      {ExecuteThreshold, P | N, badPeaks, L"Unable to peak detect.", "Threshold", "threshold"},
      {ExecuteThresholdSubtract, T | B | N | P, badBaseline, L"Unable to baseline.", "Threshold Subtract",
       "yAxis threshold"},
      {ExecuteThresholdSubtract, T | B | N | P, badNoise, L"Unable to noise.", "Threshold Subtract, Baseline",
       "yAxis baseline threshold"},
      {ExecutePeakDetect, 0, badBaseline, L"Unable to baseline.", "", ""},
      {ExecutePeakDetect, 0, badNoise, L"Unable to noise.", "Baseline", "baseline"},
      {ExecutePeakDetect, 0,
       [](TestCurve& c) {
         c.peakDetectParams.FullSearch = false;
         c.peakDetectParams.SearchStart = 200.0;
       },
       L"Unable to peak detect.", "Baseline, Noise", "baseline noise"},
  };
  for (const auto& row : rows) {
    TestCurve curve = Evaluated(row.status);
    row.spoil(curve);
    EXPECT_EQ(RunOn(row.function, curve), (Outcome{false, row.changed, row.error})) << row.history;
    EXPECT_EQ(History(curve), row.history);
  }
}

TEST(Cascade, LeavesTheErrorAloneOnSuccess) {
  for (const Function function : {ExecuteSmooth, ExecuteBaseline, ExecuteBaselineSubtract, ExecuteNoise,
                                  ExecuteThreshold, ExecuteThresholdSubtract, ExecutePeakDetect}) {
    TestCurve curve = Evaluated(T | B | N | P);
    Changed changed;
    std::wstring error = L"of before";
    EXPECT_TRUE(function(curve, changed, error));
    EXPECT_EQ(error, L"of before");
  }
}

TEST(Cascade, AppendsToTheHistoryEachTime) {
  TestCurve curve = Evaluated(T | B | N);
  RunOn(ExecuteNoise, curve);
  RunOn(ExecuteNoise, curve);
  RunOn(ExecuteThreshold, curve);
  EXPECT_EQ(History(curve), "Noise, Noise, Threshold");
}

TEST(Cascade, ReportsARerunOfTheNoiseThatRunsOutOfMemoryAsAMessage) {
  TestCurve curve = Evaluated(B | N);
  curve.noise = {};
  const FailingAllocations noMemory(curve.yAxis.size() * sizeof(double));
  EXPECT_EQ(RunOn(ExecuteBaselineSubtract, curve), (Outcome{false, "yAxis baseline", L"std::bad_alloc"}));
  EXPECT_EQ(History(curve), "Baseline Subtract");
}

TEST(Cascade, LetsTheExceptionsOfOtherStepsPass) {
  TestCurve curve = Evaluated(0);
  curve.baseline = {};
  const FailingAllocations noMemory(curve.yAxis.size() * sizeof(double));
  EXPECT_THROW(RunOn(ExecuteBaseline, curve), std::bad_alloc);
}

TEST(ExecuteNoise, ReportsAnExceptionOfThePeaksAsAMessage) {
  TestCurve curve = Evaluated(B | N | P);
  curve.noiseParams.Auto = false;
  curve.peakDetectParams.SNInUse = false;  // every ripple is a row, which takes memory
  curve.peaks = {};
  const FailingAllocations noMemory(curve.yAxis.size() * sizeof(double));
  EXPECT_EQ(RunOn(ExecuteNoise, curve), (Outcome{false, "noise", L"std::bad_alloc"}));
}
