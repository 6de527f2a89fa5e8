#include <RecordCheck.h>

#include <curve/SampleCurve.h>
#include <curve/TestCurve.h>
#include <cmath>
#include <limits>

using namespace TslBL;
using namespace tests;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

PeakInfo Peak(std::uint32_t start, double area) {
  PeakInfo p;
  p.startIdx = start;
  p.area = area;
  return p;
}

TestCurve SampleCurve() {
  TestCurve c;
  c.id = 0xFFFFFFFE;
  c.name = L"\u00B5-scan";
  c.status = 0x00000073;
  c.sourceListA = {11, 12};
  c.sourceListB = {13};
  c.xAxis = {100.0, 100.5};
  c.smoothParams.Passes = 3;
  c.yAxis = {1.5, -2.5};
  c.baselineParams.SegSize = 77;
  c.baseline = {0.25, 0.5};
  c.noiseParams.SegSize = 78;
  c.noise = {0.75, 1.25};
  c.thresholdParams.Value = 6.5;
  c.peakDetectParams.SN = 9;
  c.peaks = {Peak(21, 31.5), Peak(22, 32.5)};
  c.largestAreaIdx = 1;
  c.largestMaxIdx = 0;
  c.largestCentroidIdx = -1;
  c.evals = {CurveEval(c.thresholdParams), CurveEval(CurveEval::AerosolFilter())};
  c.annotations = {{41.5, 42.5, L"M+H"}, {43.5, 44.5, L""}};
  return c;
}

// x = 0, 0.5, 2, 4 and 8.
TestCurve Uneven() { return CurveOf("1 2 3 4 5", "0 0.5 2 4 8"); }

std::uint32_t Down(double x) { return Uneven().QXAxisToIdx(x, ROUND_DOWN); }
std::uint32_t Up(double x) { return Uneven().QXAxisToIdx(x, ROUND_UP); }

// A curve with a field of its own, as spectra and chromatograms have.
class TaggedCurve : public TestCurve {
 public:
  int tag = 0;
  TaggedCurve* Clone() const override { return new TaggedCurve(*this); }
};

}  // namespace

TEST(AllRecords, Curve) {
  std::vector<FieldChange<TestCurve>> rows = CurveRows<TestCurve>();
  rows.push_back({"peaks.area", [](auto& c) { c.peaks = {Peak(0, 1.5)}; }});
  rows.push_back({"evals.command", [](auto& c) { c.evals = {CurveEval(NoiseParams())}; }});
  CheckRecord<TestCurve>(rows);
}
TEST(Golden, Curve) { CheckGolden(SampleCurve(), "Curve.v2"); }
TEST(CutShort, Curve) { CheckCutShort(SampleCurve()); }

TEST(Curve, ReadsVersion1AndEmptiesItsAnnotations) {
  TestCurve expected = SampleCurve();
  expected.annotations.clear();
  TestCurve used;
  used.annotations.resize(3);
  used.peaks.resize(5);
  EXPECT_TRUE(FromBytes<TestCurve>(GoldenBytes("Curve.v1"), used) == expected);
}

// Detection parameters of version 1 have no algorithm: the sweep, whatever the curve had.
TEST(Curve, TakesNothingFromItselfForAnOlderRecordInside) {
  TestCurve written;
  written.peakDetectParams = PeakDetectParams::DefaultMS();
  std::string bytes = ToBytes(written);
  const std::string inside = ToBytes(written.peakDetectParams);
  const std::string older = GoldenBytes("PeakDetectParams.v1");
  ASSERT_NE(bytes.find(inside), std::string::npos);
  bytes.replace(bytes.find(inside), inside.size(), older);
  TestCurve used;
  used.peakDetectParams.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  EXPECT_EQ(FromBytes<TestCurve>(bytes, used).peakDetectParams, FromBytes<PeakDetectParams>(older));
}

TEST(Curve, IsEmptyByDefault) {
  const TestCurve c;
  EXPECT_EQ(c.id, Curve::ID_INVALID);
  EXPECT_EQ(c.name, L"");
  EXPECT_EQ(c.status, 0u);
  EXPECT_TRUE(c.sourceListA.empty() && c.sourceListB.empty());
  EXPECT_TRUE(c.xAxis.empty() && c.yAxis.empty() && c.baseline.empty() && c.noise.empty());
  EXPECT_TRUE(c.peaks.empty() && c.evals.empty() && c.annotations.empty());
  EXPECT_EQ(c.largestAreaIdx, -1);
  EXPECT_EQ(c.largestMaxIdx, -1);
  EXPECT_EQ(c.largestCentroidIdx, -1);
}

TEST(Curve, HasTheConstructorsParametersByDefault) {
  EXPECT_EQ(TestCurve().smoothParams, SmoothParams());
  EXPECT_EQ(TestCurve().baselineParams, BaselineParams());
  EXPECT_EQ(TestCurve().noiseParams, NoiseParams());
  EXPECT_EQ(TestCurve().thresholdParams, ThresholdParams());
  EXPECT_EQ(TestCurve().peakDetectParams, PeakDetectParams());
}

TEST(Curve, HasItsNumbers) {
  EXPECT_EQ(Curve::ID_INVALID, 0u);
  EXPECT_EQ(Curve::ID_RT_SPEC, 1u);
  EXPECT_EQ(Curve::ID_RT_TIC_SCAN, 2u);
  EXPECT_EQ(Curve::ID_RT_TIC_SIM, 3u);
  EXPECT_EQ(Curve::STATUS_Y, 0x001u);
  EXPECT_EQ(Curve::STATUS_X, 0x002u);
  EXPECT_EQ(Curve::STATUS_THRESHOLD, 0x004u);
  EXPECT_EQ(Curve::STATUS_SMOOTHED, 0x008u);
  EXPECT_EQ(Curve::STATUS_BASELINE, 0x010u);
  EXPECT_EQ(Curve::STATUS_NOISE, 0x020u);
  EXPECT_EQ(Curve::STATUS_PEAKS, 0x040u);
  EXPECT_EQ(Curve::STATUS_OPD, 0x080u);
  EXPECT_EQ(Curve::STATUS_CSDECON, 0x100u);
  EXPECT_EQ(Curve::STATUS_FROZEN, 0x180u);
  EXPECT_EQ(ROUND_DOWN, 0u);
  EXPECT_EQ(ROUND_UP, 1u);
}

TEST(Curve, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 3u, 0xFFFFFFFFu}) {
    const std::string bytes = Bytes(version) + ToBytes(SampleCurve()).substr(4);
    EXPECT_EQ(ReadFailure<TestCurve>(bytes, SampleCurve()), "Unknown Curve version.");
  }
}

TEST(Curve, DoesNotTrustTheCountOfAList) {
  const std::string untilListA = Bytes(2u, 0u, std::wstring(), 0u);
  EXPECT_EQ(ReadFailure<TestCurve>(untilListA + Bytes(0xFFFFFFFFu, 1u)), "Unknown SmoothParams version.");
  EXPECT_EQ(ReadFailure<TestCurve>(untilListA + Bytes(0u, 0u, 0xFFFFFFFFu, 1.5)),
            "Unknown SmoothParams version.");
}

TEST(Curve, ReadingReplacesWhatItHeld) {
  EXPECT_TRUE(FromBytes<TestCurve>(ToBytes(TestCurve()), SampleCurve()) == TestCurve());
}

TEST(Curve, ReadingLeavesTheFieldsOfASubclass) {
  TaggedCurve tagged;
  tagged.tag = 7;
  const auto read = FromBytes<TaggedCurve>(ToBytes(SampleCurve()), tagged);
  EXPECT_EQ(read.tag, 7);
  EXPECT_TRUE(static_cast<const TestCurve&>(read) == SampleCurve());
}

TEST(Curve, DumpsNothing) { EXPECT_EQ(DumpOf(SampleCurve()), L""); }

TEST(Curve, CopiesAreDeep) {
  TestCurve original = SampleCurve();
  const TestCurve copy = original;
  TestCurve assigned;
  assigned = original;
  original.peaks[0].area = 0.0;
  original.evals.clear();
  original.yAxis[0] = 99.0;
  EXPECT_TRUE(copy == SampleCurve());
  EXPECT_TRUE(assigned == SampleCurve());
}

TEST(Curve, AddsStatusBitsAndTakesNoneOut) {
  TestCurve c;
  c.AddStatus(Curve::STATUS_NOISE);
  c.AddStatus(Curve::STATUS_X);
  c.AddStatus(Curve::STATUS_X);
  EXPECT_EQ(c.status, 0x022u);
}

TEST(Curve, ChecksForAllOrForAnyOfTheBits) {
  TestCurve c;
  c.AddStatus(Curve::STATUS_Y);
  const auto both = static_cast<Curve::Status>(Curve::STATUS_Y | Curve::STATUS_X);
  EXPECT_TRUE(c.CheckAllStatus(Curve::STATUS_Y));
  EXPECT_FALSE(c.CheckAllStatus(both));
  EXPECT_TRUE(c.CheckAnyStatus(both));
  EXPECT_FALSE(c.CheckAnyStatus(Curve::STATUS_X));
  c.AddStatus(Curve::STATUS_X);
  EXPECT_TRUE(c.CheckAllStatus(both));
}

TEST(Curve, CountsPointsByAmplitudesAndPeaksByRows) {
  TestCurve c;
  c.xAxis.resize(5);
  c.yAxis.resize(4);
  c.peaks.resize(3);
  EXPECT_EQ(c.QNumPoints(), 4u);
  EXPECT_EQ(c.QNumPeaks(), 3u);
}

TEST(SetParam, StoresEachKindOfParameters) {
  const TestCurve from = SampleCurve();
  TestCurve c;
  c.SetParam(from.smoothParams);
  c.SetParam(from.baselineParams);
  c.SetParam(from.noiseParams);
  c.SetParam(from.thresholdParams);
  c.SetParam(from.peakDetectParams);
  TestCurve expected;
  expected.smoothParams = from.smoothParams;
  expected.baselineParams = from.baselineParams;
  expected.noiseParams = from.noiseParams;
  expected.thresholdParams = from.thresholdParams;
  expected.peakDetectParams = from.peakDetectParams;
  EXPECT_TRUE(c == expected);
}

TEST(SetParam, DoesNothingForAnInt) {
  TestCurve c = SampleCurve();
  c.SetParam(5);
  EXPECT_TRUE(c == SampleCurve());
}

TEST(QXAxisToIdx, GivesZeroWithoutAnXAxis) {
  TestCurve c = Uneven();
  c.status = Curve::STATUS_Y;
  EXPECT_EQ(c.QXAxisToIdx(4.0, ROUND_DOWN), 0u);
  EXPECT_EQ(c.QXAxisToIdx(4.0, ROUND_UP), 0u);
  c.status = Curve::STATUS_X;
  c.xAxis.clear();
  EXPECT_EQ(c.QXAxisToIdx(4.0, ROUND_UP), 0u);
}

TEST(QXAxisToIdx, IsClampedToTheEnds) {
  for (const double x : {-1e300, -1.0, 0.0}) EXPECT_EQ(Up(x), 0u) << x;
  for (const double x : {8.0, 8.1, 1e300}) EXPECT_EQ(Down(x), 4u) << x;
}

TEST(QXAxisToIdx, FindsEachPointInBothModes) {
  for (std::uint32_t i = 0; i < 5; ++i) {
    EXPECT_EQ(Down(Uneven().xAxis[i]), i);
    EXPECT_EQ(Up(Uneven().xAxis[i]), i);
  }
}

TEST(QXAxisToIdx, TakesAPointWithinAMillionth) {
  for (const double x : {2.0 - 0.99e-6, 2.0 + 0.99e-6}) {
    EXPECT_EQ(Down(x), 2u) << x;
    EXPECT_EQ(Up(x), 2u) << x;
  }
  EXPECT_EQ(Down(0.5 - 1.01e-6), 0u);
  EXPECT_EQ(Up(0.5 + 1.01e-6), 2u);
}

TEST(QXAxisToIdx, CountsAMillionthItselfAsAHit) {
  const TestCurve c = CurveOf("1 1 1", "-1 0 1");
  EXPECT_EQ(c.QXAxisToIdx(1e-6, ROUND_UP), 1u);
  EXPECT_EQ(c.QXAxisToIdx(-1e-6, ROUND_DOWN), 1u);
}

TEST(QXAxisToIdx, ModesDifferByOneBetweenTwoPoints) {
  const struct {
    double x;
    std::uint32_t below;
  } rows[] = {{0.25, 0}, {0.6, 1}, {1.9, 1}, {3.0, 2}, {4.1, 3}, {7.9, 3}};
  for (const auto& [x, below] : rows) {
    EXPECT_EQ(Down(x), below) << x;
    EXPECT_EQ(Up(x), below + 1) << x;
  }
}

TEST(QXAxisToIdx, AgreesWithAScanForAnyLength) {
  for (std::size_t n = 1; n < 40; ++n) {
    const TestCurve c = CurveOf(Count(n));
    for (double x = -0.5; x < static_cast<double>(n); x += 0.5) {
      const double in = std::clamp(x, 0.0, static_cast<double>(n - 1));
      ASSERT_EQ(c.QXAxisToIdx(x, ROUND_DOWN), std::floor(in)) << x << " of " << n;
      ASSERT_EQ(c.QXAxisToIdx(x, ROUND_UP), std::ceil(in)) << x << " of " << n;
    }
  }
}

TEST(QXAxisToIdx, StaysInsideForANaN) {
  EXPECT_LT(Down(kNaN), 5u);
  EXPECT_LT(Up(kNaN), 5u);
}

TEST(FractionalIndexToXAxisVal, IsLinearBetweenPoints) {
  const struct {
    double idx;
    double x;
  } rows[] = {{0.0, 0.0}, {0.5, 0.25}, {1.0, 0.5}, {1.5, 1.25}, {2.25, 2.5}, {3.75, 7.0}};
  for (const auto& [idx, x] : rows) EXPECT_EQ(Uneven().FractionalIndexToXAxisVal(idx), x) << idx;
}

TEST(FractionalIndexToXAxisVal, EndsAtTheLastPoint) {
  EXPECT_EQ(Uneven().FractionalIndexToXAxisVal(4.0), 8.0);
  EXPECT_EQ(Uneven().FractionalIndexToXAxisVal(4.9), 8.0);
  EXPECT_EQ(Uneven().FractionalIndexToXAxisVal(1e300), 8.0);
  EXPECT_EQ(CurveOf("1", "7.5").FractionalIndexToXAxisVal(0.5), 7.5);
}

TEST(FractionalIndexToXAxisVal, IsZeroOnAnEmptyAxis) {
  EXPECT_EQ(TestCurve().FractionalIndexToXAxisVal(1.0), 0.0);
}

TEST(QSignalToNoise, DividesWhatStandsAboveTheBaseline) {
  EXPECT_EQ(QSignalToNoise(10.0, 4.0, 2.0), 3.0);
  EXPECT_EQ(QSignalToNoise(2.0, 4.0, 2.0), -1.0);
}

TEST(QSignalToNoise, IsHugeWithoutNoise) {
  for (const double noise : {0.0, -1.0, 0.99e-8, kNaN}) EXPECT_EQ(QSignalToNoise(1.0, 0.0, noise), 9e99);
  EXPECT_DOUBLE_EQ(QSignalToNoise(1.0, 0.0, 1e-8), 1e8);
}

TEST(QWidthAndResolution, GivesBoth) {
  const struct {
    double left, right, width, resolution;
  } rows[] = {{99.75, 100.25, 0.5, 200.0}, {100.0, 100.0, 0.0, 0.0}, {101.0, 99.0, -2.0, 0.0}};
  for (const auto& row : rows) {
    double width = kNaN;
    double resolution = kNaN;
    QWidthAndResolution(100.0, row.left, row.right, width, resolution);
    EXPECT_EQ(width, row.width);
    EXPECT_EQ(resolution, row.resolution);
  }
}
