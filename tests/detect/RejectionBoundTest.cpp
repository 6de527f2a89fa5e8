// What detection leaves out because it is certain to fail changes nothing: with limits the
// table has those rows of the table without limits that pass them, bit for bit.

#include <detect/PeakCurves.h>
#include <detect/RandomCurves.h>
#include <algorithm>
#include <cmath>

using namespace TslBL;
using namespace tests;

namespace {

double At(const std::vector<double>& values, const PeakInfo& p) {
  return values[static_cast<std::size_t>(p.ReportedIdx())];
}

bool Passes(const Curve& curve, const PeakInfo& p) {
  const PeakDetectParams& t = curve.peakDetectParams;
  const double noise = At(curve.noise, p);
  const double ratio = noise < 1e-8 ? 9e99 : (p.ReportedAmpl() - At(curve.baseline, p)) / noise;
  if (t.ThresholdInUse && p.ReportedAmpl() < curve.thresholdParams.Value) return false;
  return !(t.SNInUse && ratio < t.SN);
}

TestCurve WithoutLimits(TestCurve curve) {
  curve.peakDetectParams.SNInUse = curve.peakDetectParams.ThresholdInUse = false;
  EXPECT_TRUE(Detect(curve).ok);
  return curve;
}

void ExpectThoseThatPass(TestCurve curve) {
  std::vector<PeakInfo> expected = WithoutLimits(curve).peaks;
  std::erase_if(expected, [&curve](const PeakInfo& p) { return !Passes(curve, p); });
  ASSERT_TRUE(Detect(curve).ok);
  ASSERT_EQ(Spans(curve.peaks), Spans(expected));
  for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(Bits(curve.peaks[i]), Bits(expected[i])) << i;
  const auto largest = [&expected](double PeakInfo::*value) {
    const auto row = std::ranges::max_element(expected, {}, value);
    return expected.empty() ? -1 : static_cast<std::int32_t>(row - expected.begin());
  };
  EXPECT_EQ(curve.largestAreaIdx, largest(&PeakInfo::area));
  EXPECT_EQ(curve.largestMaxIdx, largest(&PeakInfo::maxAmpl));
  EXPECT_EQ(curve.largestCentroidIdx, largest(&PeakInfo::centroidAmpl));
}

TestCurve CurveFrom(const RandomCurve& c, RandomCurves& random) {
  TestCurve curve = PeakCurve(c.y, c.baseline);
  curve.peakDetectParams.MaxValley = c.maxValley;
  curve.peakDetectParams.RetentionType =
      random.Below(2) == 0 ? PeakDetectParams::PeakTop : PeakDetectParams::CentroidTopPercent;
  curve.peakDetectParams.Retention = 100.0 / (1 + random.Below(8));
  for (double& noise : curve.noise) noise = 0.1 * (1 + random.Below(5));
  return curve;
}

void UseRatio(TestCurve& curve, std::uint32_t sn) {
  curve.peakDetectParams.SNInUse = true;
  curve.peakDetectParams.SN = sn;
}

void UseThreshold(TestCurve& curve, double value) {
  curve.AddStatus(Curve::STATUS_THRESHOLD);
  curve.peakDetectParams.ThresholdInUse = true;
  curve.thresholdParams.Value = value;
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

TEST(RejectionBound, ARatioLeavesTheRowsThatReachIt) {
  RandomCurves random(41);
  for (int round = 0; round < 4000; ++round) {
    const RandomCurve c = random.Next(120);
    SCOPED_TRACE(c.Text());
    TestCurve curve = CurveFrom(c, random);
    UseRatio(curve, static_cast<std::uint32_t>(random.Below(40)));
    ExpectThoseThatPass(curve);
  }
}

TEST(RejectionBound, AThresholdLeavesTheRowsThatReachItExactly) {
  RandomCurves random(42);
  for (int round = 0; round < 4000; ++round) {
    const RandomCurve c = random.Next(120);
    SCOPED_TRACE(c.Text());
    const TestCurve curve = CurveFrom(c, random);
    const std::vector<PeakInfo> rows = WithoutLimits(curve).peaks;
    if (rows.empty()) continue;
    const double reached =
        rows[static_cast<std::size_t>(random.Below(static_cast<int>(rows.size())))].ReportedAmpl();
    for (const double value : {reached, std::nextafter(reached, kInfinity)}) {
      TestCurve limited = curve;
      UseThreshold(limited, value);
      ExpectThoseThatPass(limited);
    }
  }
}

TEST(RejectionBound, BothLimitsTogether) {
  RandomCurves random(43);
  for (int round = 0; round < 2000; ++round) {
    const RandomCurve c = random.Next(120);
    SCOPED_TRACE(c.Text());
    TestCurve curve = CurveFrom(c, random);
    UseRatio(curve, static_cast<std::uint32_t>(random.Below(20)));
    UseThreshold(curve, random.Below(12));
    ExpectThoseThatPass(curve);
  }
}

TEST(RejectionBound, OfASearchRangeAreThoseOfTheWholeCurve) {
  RandomCurves random(46);
  for (int round = 0; round < 4000; ++round) {
    const RandomCurve c = random.Next(120);
    SCOPED_TRACE(c.Text());
    TestCurve curve = CurveFrom(c, random);
    curve.peakDetectParams.FullSearch = false;
    curve.peakDetectParams.SearchStart = random.Below(static_cast<int>(c.y.size()));
    curve.peakDetectParams.SearchEnd = curve.peakDetectParams.SearchStart + random.Below(80);
    UseRatio(curve, static_cast<std::uint32_t>(random.Below(40)));
    ExpectThoseThatPass(curve);
  }
}

// The curve through the points rises above them: 0 0 10 10 0 0 has its top at 11.25.
TEST(RejectionBound, ATopBetweenThePointsCounts) {
  TestCurve curve = PeakCurve("0 0 10 10 0 0");
  curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  const double top = WithoutLimits(curve).peaks.at(0).maxAmpl;
  ASSERT_GT(top, 11.0);
  UseThreshold(curve, top);
  EXPECT_EQ(SpansFound(curve), "1-2-4");
  UseThreshold(curve, std::nextafter(top, kInfinity));
  EXPECT_EQ(SpansFound(curve), "");
}

// A straight rise to two equal points and a fall to 0, with a baseline that follows the rise and stays up.
// The one bend of the curve is at its fall.
TEST(RejectionBound, ATopBesideAFallCountsWhereTheBaselineStaysUp) {
  for (const std::size_t rise : {20U, 21U}) {
    std::vector<double> y;
    for (std::size_t i = 0; i <= rise; ++i) y.push_back(0.5 * static_cast<double>(i));
    y.insert(y.end(), {y.back(), 0, 0});
    std::vector<double> baseline = y;
    for (std::size_t i = 1; i < y.size(); ++i) baseline[i] = i < rise + 2 ? y[i] - 0.1 : y[rise] - 0.1;
    TestCurve curve = PeakCurve(y, baseline);
    curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
    const double top = WithoutLimits(curve).peaks.at(0).maxAmpl;
    ASSERT_GT(top, y[rise] + 0.5);
    UseThreshold(curve, top);
    EXPECT_TRUE(Detect(curve).ok);
    EXPECT_EQ(curve.peaks.size(), 1U) << rise;
  }
}

TEST(RejectionBound, ANoiseTooSmallForARatioPasses) {
  TestCurve curve = PeakCurve("0 1 2 1 0");
  UseRatio(curve, 1000);
  EXPECT_EQ(SpansFound(curve), "");
  curve.noise[2] = 1e-9;
  EXPECT_EQ(SpansFound(curve), "0-2-4");
}

TEST(RejectionBound, ANoiseThatIsNoNumberPasses) {
  TestCurve curve = PeakCurve("0 1 2 1 0");
  UseRatio(curve, 1000);
  curve.noise[2] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(SpansFound(curve), "0-2-4");
}

TEST(RejectionBound, RelativeLimitsReferToWhatFailsOthers) {
  TestCurve curve = PeakCurve("0 50 100 50 0 0 2 4 2 0");
  for (std::size_t i = 0; i < 5; ++i) curve.noise[i] = 1000.0;
  UseRatio(curve, 2);
  EXPECT_EQ(SpansFound(curve), "5-7-9");
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 10.0;
  EXPECT_EQ(SpansFound(curve), "") << "4 is not 10 % of 100";
}

TEST(RejectionBound, AmongTheTallestCandidatesAreThoseThatFail) {
  TestCurve curve = PeakCurve("0 50 100 50 0 0 2 4 2 0");
  for (std::size_t i = 0; i < 5; ++i) curve.noise[i] = 1000.0;
  UseRatio(curve, 2);
  curve.peakDetectParams.PeakCntInUse = true;
  curve.peakDetectParams.PeakCnt = 1;
  EXPECT_EQ(SpansFound(curve), "");
}

TEST(RejectionBound, TheSortedRouteKeepsTheRowsThatPass) {
  RandomCurves random(44);
  for (int round = 0; round < 2000; ++round) {
    const RandomCurve c = random.Next(120);
    SCOPED_TRACE(c.Text());
    TestCurve curve = CurveFrom(c, random);
    curve.peakDetectParams.FindFeatureAlgorithm = PeakDetectParams::Sorted;
    // So that the limit asks for no taller candidates.
    curve.noise[0] = 0.0;
    curve.baseline[0] = std::max(curve.baseline[0], 0.0);
    UseRatio(curve, static_cast<std::uint32_t>(random.Below(40)));
    ExpectThoseThatPass(curve);
  }
}

TEST(RejectionBound, CurvesWithNumbersMissingKeepTheirRows) {
  RandomCurves random(45);
  for (int round = 0; round < 2000; ++round) {
    const RandomCurve c = random.NextBroken(120);
    SCOPED_TRACE(c.Text());
    TestCurve curve = CurveFrom(c, random);
    UseRatio(curve, static_cast<std::uint32_t>(random.Below(40)));
    std::vector<PeakInfo> expected = WithoutLimits(curve).peaks;
    std::erase_if(expected, [&curve](const PeakInfo& p) { return !Passes(curve, p); });
    EXPECT_EQ(SpansFound(curve), Spans(expected));
  }
}
