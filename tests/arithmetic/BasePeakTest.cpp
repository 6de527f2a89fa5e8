#include <gtest/gtest.h>

#include <tslbl/arithmetic/BasePeak.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <cmath>

using namespace TslBL;

namespace {

// Points a tenth apart from m/z 0; lines 6 points wide over a floor.
Spectrum Lines(std::size_t points, const std::vector<std::pair<double, double>>& lines) {
  Spectrum s;
  for (std::size_t i = 0; i < points; ++i) {
    s.xAxis.push_back(0.1 * static_cast<double>(i));
    double y = 10.0 + static_cast<double>(i * 7919 % 5);
    for (const auto& [centre, height] : lines)
      y += height * std::exp(-0.5 * std::pow((s.xAxis.back() - centre) / 0.25, 2.0));
    s.yAxis.push_back(y);
  }
  s.AddStatus(Curve::STATUS_X);
  s.AddStatus(Curve::STATUS_Y);
  return s;
}

const std::vector<CurveEval> kChain = {CurveEval(BaselineParams::DefaultMS()),
                                       CurveEval(NoiseParams::DefaultMS()),
                                       CurveEval(PeakDetectParams::DefaultMS())};

struct Found {
  bool ok = false;
  bool evalFailed = true;
  MZPeak peak;
  std::wstring error;
};

Found BasePeak(const Spectrum& s, double start, double end, const std::vector<CurveEval>& chain = kChain) {
  Found found;
  found.ok =
      CalcBasePeak(s, {MZRange::Partial, start, end}, chain, found.peak, found.evalFailed, found.error);
  return found;
}

const Spectrum kSpectrum = Lines(5000, {{100.0, 500.0}, {200.0, 900.0}, {300.0, 700.0}});

}  // namespace

TEST(CalcBasePeak, IsTheTallestOfTheRange) {
  const std::pair<std::pair<double, double>, double> cases[] = {
      {{0, 500}, 200}, {{50, 150}, 100}, {{250, 500}, 300}, {{99.9, 100.1}, 100}};
  for (const auto& [range, mz] : cases) {
    const Found found = BasePeak(kSpectrum, range.first, range.second);
    EXPECT_TRUE(found.ok);
    EXPECT_FALSE(found.evalFailed);
    EXPECT_NEAR(found.peak.Mass, mz, 0.02);
  }
}

TEST(CalcBasePeak, TheRangeReachesToThePointsBesideItsEnds) {
  // The tallest point, at m/z 200, is one step outside; its neighbours inside are lower than the line at 100.
  Spectrum s = Lines(5000, {{100.0, 500.0}, {200.0, 900.0}});
  EXPECT_NEAR(BasePeak(s, 50, 199.95).peak.Mass, 200.0, 0.02);
  EXPECT_NEAR(BasePeak(s, 200.05, 400).peak.Mass, 200.0, 0.02);
}

TEST(CalcBasePeak, ItsNumberIsThatInTheWindow) { EXPECT_EQ(BasePeak(kSpectrum, 250, 500).peak.PeakId, 0u); }

TEST(CalcBasePeak, LeavesTheSpectrumAlone) {
  const Spectrum before = kSpectrum;
  EXPECT_TRUE(BasePeak(kSpectrum, 0, 500).ok);
  EXPECT_EQ(kSpectrum, before);
}

TEST(CalcBasePeak, IsTheFirstOfEqualMaxima) {
  Spectrum s = Lines(2000, {{50.0, 500.0}, {150.0, 500.0}});
  const auto at = [&](std::size_t i) -> double& { return s.yAxis[i]; };
  for (std::size_t i = 480; i <= 520; ++i) at(i + 1000) = at(i);
  EXPECT_NEAR(BasePeak(s, 0, 200).peak.Mass, 50.0, 0.05);
}

TEST(CalcBasePeak, TakesTheLimitsOfAFullRangeToo) {
  Found found;
  EXPECT_TRUE(
      CalcBasePeak(kSpectrum, {MZRange::Full, 50, 150}, kChain, found.peak, found.evalFailed, found.error));
  EXPECT_NEAR(found.peak.Mass, 100.0, 0.02);
}

TEST(CalcBasePeak, CutsItsWindowAtTheEndsOfTheSpectrum) {
  const Spectrum s = Lines(2000, {{1.5, 500.0}, {198.5, 500.0}});
  EXPECT_NEAR(BasePeak(s, 0, 100).peak.Mass, 1.5, 0.02);
  EXPECT_NEAR(BasePeak(s, 100, 200).peak.Mass, 198.5, 0.02);
  EXPECT_NEAR(BasePeak(Lines(200, {{10.0, 500.0}}), 0, 20).peak.Mass, 10.0, 0.02) << "the whole spectrum";
}

TEST(CalcBasePeak, SeesThreeHundredPointsToEachSide) {
  // The rightmost point of the window is 300 points from the top, and the history begins anew.
  const Spectrum plain = Lines(2000, {{100.0, 500.0}});
  const auto with = [&](std::size_t point) {
    Spectrum s = plain;
    s.yAxis[point] = 400.0;
    return BasePeak(s, 90, 110).peak;
  };
  const MZPeak expected = BasePeak(plain, 90, 110).peak;
  EXPECT_EQ(with(1000 + 301), expected);
  EXPECT_NE(with(1000 + 300), expected);
  EXPECT_EQ(with(1000 - 301), expected);
  EXPECT_NE(with(1000 - 300), expected);
}

TEST(CalcBasePeak, OfNoPointOrNoPeakIsNone) {
  for (const Found& found : {BasePeak(Spectrum(), 0, 500), BasePeak(kSpectrum, 300, 200),
                             BasePeak(Lines(5000, {}), 0, 500), BasePeak(kSpectrum, 0, 500, {})}) {
    EXPECT_FALSE(found.ok);
    EXPECT_FALSE(found.evalFailed);
    EXPECT_EQ(found.error, L"");
  }
}

TEST(CalcBasePeak, OfAnEvaluationThatFailsSaysSo) {
  Spectrum s = kSpectrum;
  s.AddStatus(Curve::STATUS_OPD);
  const Found found = BasePeak(s, 0, 500);
  EXPECT_FALSE(found.ok);
  EXPECT_TRUE(found.evalFailed);
  EXPECT_NE(found.error, L"");
}
