#include <tslbl/closed/engines/OverlapPeakEngine.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

namespace {

using namespace TslMath;

std::unique_ptr<OverlapPeakEngine> Registered() {
  return TslCommon::ComponentRegistry::Instance().CreateAs<OverlapPeakEngine>(OverlapPeakEngine::kClassId);
}

std::vector<double> Counted(std::size_t n) {
  std::vector<double> x(n);
  std::iota(x.begin(), x.end(), 0.0);
  return x;
}

// Two peaks of standard deviation 4 at 22 and 34 over a baseline of 50.
std::vector<double> TwoPeaks() {
  std::vector<double> y = Counted(60);
  for (double& value : y) {
    const double left = (value - 22) / 4;
    const double right = (value - 34) / 4;
    value = 50 + 1000 * std::exp(-left * left / 2) + 600 * std::exp(-right * right / 2);
  }
  return y;
}

TEST(OwnOverlapPeakEngine, ProposesAPlaceForEachPeak) {
  const std::vector<double> y = TwoPeaks();
  std::vector<std::int32_t> peaks;
  EXPECT_EQ(Registered()->InitialEstimates(true, 3, Counted(y.size()), y, peaks), OverlapPeakEngine::kOk);
  ASSERT_EQ(peaks.size(), 2U);
  EXPECT_NEAR(peaks[0], 22, 2);
  EXPECT_NEAR(peaks[1], 34, 2);
}

TEST(OwnOverlapPeakEngine, FitsEachPeak) {
  const std::vector<double> y = TwoPeaks();
  for (const bool hookeJeeves : {false, true}) {
    std::vector<FittedGaussian> results;
    const std::vector<std::int32_t> apexes = {21, 35};
    ASSERT_EQ(Registered()->FitPeaks(hookeJeeves, Counted(y.size()), y, apexes, 45, 5, results),
              OverlapPeakEngine::kOk);
    ASSERT_EQ(results.size(), 2U);
    EXPECT_NEAR(results[0].centre, 22, 0.01);
    EXPECT_NEAR(results[1].centre, 34, 0.01);
    EXPECT_NEAR(results[0].height, 1000, 2);
    EXPECT_NEAR(results[1].height, 600, 2);
    EXPECT_NEAR(results[0].a3, 4, 0.01);
    EXPECT_NEAR(results[0].baseline, 50, 1);
  }
}

TEST(OwnOverlapPeakEngine, HasNoResultsWhereThereIsNoFit) {
  std::vector<double> y = TwoPeaks();
  y[30] = std::numeric_limits<double>::quiet_NaN();
  std::vector<FittedGaussian> results;
  const std::vector<std::int32_t> apexes = {21, 35};
  EXPECT_EQ(Registered()->FitPeaks(false, Counted(y.size()), y, apexes, 45, 5, results),
            OverlapPeakEngine::kNoFit);
  EXPECT_TRUE(results.empty());
}

TEST(OwnOverlapPeakEngine, ComesBackInThePlaceOfAnother) {
  auto& registry = TslCommon::ComponentRegistry::Instance();
  registry.Register(OverlapPeakEngine::kClassId, nullptr);
  RegisterOwnOverlapPeakEngine();
  EXPECT_NE(Registered(), nullptr);
}

}  // namespace
