#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include <tool/commands/chrom/PeakAreas.h>
#include <tool/commands/chrom/SimulatedCurves.h>

namespace tests {
namespace {

using testing::SizeIs;
using TslTool::Chromatogram;

// The root of the mean square of (measured - true) / standard error over many curves.
template <class Disturb>
double RmsOf(const SimulatedPeak& peak, std::size_t points, double level, Disturb disturb) {
  std::mt19937 random(7);
  double squares = 0.0;
  int found = 0;
  for (int i = 0; i < 150; ++i) {
    Chromatogram curve = CleanCurve({peak}, points, level);
    disturb(curve, random);
    const TslTool::ChromPeak* highest = nullptr;
    const auto evaluated = Evaluated(curve);
    for (const auto& each : evaluated.peaks)
      if (!highest || each.height > highest->height) highest = &each;
    if (!highest) continue;
    ++found;
    squares += std::pow((highest->area - peak.Area()) / highest->areaError, 2);
  }
  EXPECT_EQ(found, 150);
  return std::sqrt(squares / found);
}

struct Simulation {
  double height, sigma;
  std::size_t points;
};

TEST(PeakAreas, HaveStandardErrorsThatHoldOverNoise) {
  for (const Simulation& each : {Simulation{20.0, 4.0, 400}, {200.0, 4.0, 400}, {200.0, 12.0, 1000}}) {
    const double rms =
        RmsOf({0.4 * static_cast<double>(each.points), each.height, each.sigma}, each.points, 50.0,
              [](Chromatogram& curve, std::mt19937& random) { AddNoise(curve, 1.0, random); });
    EXPECT_GT(rms, 0.85) << each.height << " " << each.sigma;
    EXPECT_LT(rms, 1.15) << each.height << " " << each.sigma;
  }
}

TEST(PeakAreas, HaveStandardErrorsThatHoldOverCounts) {
  for (const Simulation& each : {Simulation{500.0, 4.0, 400}, {5000.0, 4.0, 400}, {2000.0, 12.0, 1000}}) {
    const double rms =
        RmsOf({0.4 * static_cast<double>(each.points), each.height, each.sigma}, each.points, 200.0,
              [](Chromatogram& curve, std::mt19937& random) { TakeCounts(curve, 10.0, random); });
    EXPECT_GT(rms, 0.85) << each.height << " " << each.sigma;
    EXPECT_LT(rms, 1.15) << each.height << " " << each.sigma;
  }
}

// A curve that was evaluated to have one row, over a straight baseline.
TslBL::ICObj OneRow(const Chromatogram& measured, double baseline, std::uint32_t start, std::uint32_t end) {
  TslBL::ICObj curve;
  curve.xAxis = measured.seconds;
  curve.yAxis = measured.values;
  curve.baseline.assign(measured.values.size(), baseline);
  curve.peaks.resize(1);
  curve.peaks[0].startIdx = start;
  curve.peaks[0].endIdx = end;
  curve.peaks[0].halfHeightLeftIdx = start;
  curve.peaks[0].halfHeightRightIdx = end;
  return curve;
}

TEST(PeakAreas, TakeWhatLiesBesideThePeakOffIt) {
  Chromatogram measured;
  for (int i = 0; i < 100; ++i) {
    measured.seconds.push_back(i);
    measured.values.push_back(3.0 + 0.1 * i + (i > 45 && i < 55 ? 10.0 : 0.0));
  }
  const auto areas = TslTool::PeakAreas(measured, OneRow(measured, 0.0, 44, 56), nullptr);
  ASSERT_THAT(areas, SizeIs(1));
  EXPECT_NEAR(areas[0].area, 90.0, 1e-9);
  EXPECT_TRUE(std::isnan(areas[0].error));
}

TEST(PeakAreas, KeepTheBaselineThatTheUserGave) {
  const Chromatogram measured = CleanCurve({}, 100, 3.0);
  TslBL::ICObj curve = OneRow(measured, 1.0, 40, 50);
  curve.baselineParams.Auto = false;
  const auto areas = TslTool::PeakAreas(measured, curve, nullptr);
  EXPECT_NEAR(areas.at(0).area, 2.0 * static_cast<double>(areas[0].last - areas[0].first), 1e-9);
}

TEST(PeakAreas, BetweenTwoPointsAreThoseOfStraightLines) {
  Chromatogram measured;
  measured.seconds = {0.0, 1.0, 3.0, 4.0};
  measured.values = {0.0, 4.0, 2.0, 0.0};
  measured.variance = {1.0, 1.0, 1.0, 1.0};
  const auto area = TslTool::AreaBetween(measured, OneRow(measured, 0.0, 0, 3), nullptr, 0, 3);
  EXPECT_DOUBLE_EQ(area.area, 2.0 + 6.0 + 1.0);
  EXPECT_DOUBLE_EQ(area.error, std::sqrt(0.25 + 2.25 + 2.25 + 0.25));
}

}  // namespace
}  // namespace tests
