// What detection finds in a curve it finds in the curve raised, magnified, moved and mirrored.
//
// Tests: CmdPeakDetect.cpp.

#include <detect/PeakCurves.h>
#include <detect/RandomCurves.h>
#include <algorithm>
#include <cmath>

using namespace TslBL;
using namespace tests;

namespace {

constexpr int kCurves = 3000;

// A curve on which everything counts: ripples, plateaus, shoulders, valleys.
TestCurve AnyCurve(RandomCurves& random, PeakDetectParams::FindFeatureAlgorithms algorithm) {
  const RandomCurve c = random.Next(48);
  TestCurve curve = PeakCurve(c.y, c.baseline);
  curve.peakDetectParams.MaxValley = c.maxValley;
  curve.peakDetectParams.FindFeatureAlgorithm = algorithm;
  return curve;
}

// One to eight amplitudes that fall from a peak's top.
std::vector<double> Flank(RandomCurves& random, double top) {
  std::vector<double> falling;
  for (int points = 1 + random.Below(8); points > 0; --points)
    falling.push_back(top *= 0.5 + random.Below(400) / 1000.0);
  return falling;
}

// Peaks of one top each, with at least one point of the baseline between them.
TestCurve SinglePeaks(RandomCurves& random, PeakDetectParams::FindFeatureAlgorithms algorithm) {
  std::vector<double> y = {0.0};
  for (int peaks = 1 + random.Below(5); peaks > 0; --peaks) {
    const double top = 100.0 + random.Below(1000);
    const std::vector<double> left = Flank(random, top);
    const std::vector<double> right = Flank(random, top);
    y.insert(y.end(), left.rbegin(), left.rend());
    y.push_back(top);
    y.insert(y.end(), right.begin(), right.end());
    y.insert(y.end(), static_cast<std::size_t>(1 + random.Below(3)), 0.0);
  }
  TestCurve curve = PeakCurve(y);
  curve.peakDetectParams.FindFeatureAlgorithm = algorithm;
  return curve;
}

TestCurve Detected(TestCurve curve) {
  EXPECT_TRUE(Detect(curve).ok);
  return curve;
}

using Value = double PeakInfo::*;
constexpr Value kPositions[] = {&PeakInfo::maxIdx,
                                &PeakInfo::centroidIdx,
                                &PeakInfo::halfHeightLeftIdx,
                                &PeakInfo::halfHeightRightIdx,
                                &PeakInfo::areaStartIdx,
                                &PeakInfo::areaEndIdx};
constexpr Value kAmplitudes[] = {&PeakInfo::apexAmpl,     &PeakInfo::maxAmpl,      &PeakInfo::maxBaseline,
                                 &PeakInfo::centroidAmpl, &PeakInfo::baselineAmpl, &PeakInfo::noiseAmpl};

class PeakDetectInvariance : public testing::TestWithParam<PeakDetectParams::FindFeatureAlgorithms> {};

TEST_P(PeakDetectInvariance, ACurveMagnifiedByAPowerOfTwoHasTheSamePeaksToTheBit) {
  RandomCurves random(51);
  for (int i = 0; i < kCurves; ++i) {
    const TestCurve curve = AnyCurve(random, GetParam());
    for (const double factor : {0.25, 64.0}) {
      TestCurve magnified = curve;
      for (std::vector<double>* axis : {&magnified.yAxis, &magnified.baseline, &magnified.noise})
        for (double& value : *axis) value *= factor;
      TestCurve expected = Detected(curve);
      for (PeakInfo& p : expected.peaks) {
        for (const Value value : kAmplitudes) p.*value *= factor;
        p.area *= factor;
        p.areaIntercept *= factor;
      }
      ASSERT_EQ(Bits(Detected(magnified)), Bits(expected)) << "curve " << i << " times " << factor;
    }
  }
}

TEST_P(PeakDetectInvariance, ACurveRaisedWithItsBaselineHasTheSamePeaks) {
  RandomCurves random(52);
  for (int i = 0; i < kCurves; ++i) {
    TestCurve curve = AnyCurve(random, GetParam());
    // Whole numbers and their quarters are exact, raised or not.
    curve.peakDetectParams.MaxValley = 25.0;
    for (double& value : curve.yAxis) value = std::floor(value);
    TestCurve raised = curve;
    for (std::vector<double>* axis : {&raised.yAxis, &raised.baseline})
      for (double& value : *axis) value += 4.0;
    ASSERT_EQ(SpansFound(raised), SpansFound(curve)) << "curve " << i;
  }
}

TEST_P(PeakDetectInvariance, ACurveMovedBehindPointsOfTheBaselineHasTheSamePeaksThere) {
  RandomCurves random(53);
  for (int i = 0; i < kCurves; ++i) {
    const TestCurve curve = SinglePeaks(random, GetParam());
    // Now and then by more than 16 bits count.
    const std::size_t by = static_cast<std::size_t>(1 + random.Below(100) + (i % 100 == 0 ? 70000 : 0));
    std::vector<double> y(by, 0.0);
    y.insert(y.end(), curve.yAxis.begin(), curve.yAxis.end());
    TestCurve moved = PeakCurve(y);
    moved.peakDetectParams = curve.peakDetectParams;
    const TestCurve at = Detected(curve);
    moved = Detected(moved);
    ASSERT_EQ(moved.peaks.size(), at.peaks.size()) << "curve " << i;
    for (std::size_t k = 0; k < at.peaks.size(); ++k) {
      EXPECT_EQ(moved.peaks[k].startIdx, at.peaks[k].startIdx + by);
      EXPECT_EQ(moved.peaks[k].apexIdx, at.peaks[k].apexIdx + by);
      EXPECT_EQ(moved.peaks[k].endIdx, at.peaks[k].endIdx + by);
      for (const Value value : kPositions)
        EXPECT_NEAR(moved.peaks[k].*value, at.peaks[k].*value + static_cast<double>(by), 1e-9);
      EXPECT_NEAR(moved.peaks[k].area, at.peaks[k].area, 1e-9 * at.peaks[k].area);
    }
  }
}

// Overlapping peaks and plateaus are read from left to right, and are not the same from the right.
TEST_P(PeakDetectInvariance, AMirroredCurveHasTheSameSinglePeaksMirrored) {
  RandomCurves random(54);
  for (int i = 0; i < kCurves; ++i) {
    const TestCurve curve = SinglePeaks(random, GetParam());
    TestCurve mirrored = curve;
    std::ranges::reverse(mirrored.yAxis);
    const std::uint32_t last = curve.QNumPoints() - 1;
    TestCurve at = Detected(curve);
    mirrored = Detected(mirrored);
    ASSERT_EQ(mirrored.peaks.size(), at.peaks.size()) << "curve " << i;
    std::ranges::reverse(at.peaks);
    for (std::size_t k = 0; k < at.peaks.size(); ++k) {
      const PeakInfo& p = at.peaks[k];
      const PeakInfo& m = mirrored.peaks[k];
      EXPECT_EQ(m.startIdx, last - p.endIdx);
      EXPECT_EQ(m.apexIdx, last - p.apexIdx);
      EXPECT_EQ(m.endIdx, last - p.startIdx);
      EXPECT_NEAR(m.maxIdx, last - p.maxIdx, 1e-6);
      EXPECT_NEAR(m.centroidIdx, last - p.centroidIdx, 1e-6);
      EXPECT_NEAR(m.halfHeightLeftIdx, last - p.halfHeightRightIdx, 1e-6);
      EXPECT_NEAR(m.maxAmpl, p.maxAmpl, 1e-9 * p.maxAmpl);
      EXPECT_NEAR(m.area, p.area, 1e-6 * p.area);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, PeakDetectInvariance,
                         testing::Values(PeakDetectParams::Sequential, PeakDetectParams::Sorted),
                         [](const auto& test) {
                           return test.param == PeakDetectParams::Sorted ? "Sorted" : "Sequential";
                         });

}  // namespace
