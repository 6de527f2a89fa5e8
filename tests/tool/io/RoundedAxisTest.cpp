#include <tool/io/RoundedAxis.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

using TslTool::TakeRoundingOff;

namespace {

using Values = std::vector<double>;

double Rounded(double x, double unit) { return std::round(x / unit) * unit; }

Values RoundedTo(double unit, Values mz) {
  for (double& x : mz) x = Rounded(x, unit);
  return mz;
}

Values Even(double step) {
  Values mz;
  for (int i = 0; i < 3000; ++i) mz.push_back(100.03 + step * i);
  return mz;
}

Values Growing(double step) {
  Values mz = {2000.0};
  while (mz.size() < 20000) mz.push_back(mz.back() + step * std::sqrt(mz.back() / 2000.0));
  return mz;
}

TEST(RoundingUnit, IsTheCoarsestOfWhichAllAreMultiples) {
  EXPECT_EQ(TslTool::RoundingUnit({1.0, 20.0, 3.0}), 1.0);
  EXPECT_EQ(TslTool::RoundingUnit({1.25, 20.0, 3.5}), 0.01);
  EXPECT_EQ(TslTool::RoundingUnit({1.0000004, 2.0}), 0.0);
}

TEST(RoundedAxis, IsPutBackWithinAFractionOfTheRounding) {
  for (const double ratio : {1.1, 1.25, 1.35, 1.6, 2.2, 3.3, 4.4})
    for (const double unit : {0.1, 0.01, 0.001})
      for (const Values& exact : {Even(ratio * unit), Growing(ratio * unit)}) {
        if ((exact.back() - exact.front()) / static_cast<double>(exact.size() - 1) >= 4.5 * unit) continue;
        Values mz = RoundedTo(unit, exact);
        ASSERT_TRUE(TakeRoundingOff(mz)) << ratio << " " << unit << " " << exact[1];
        double square = 0.0;
        for (std::size_t i = 0; i < mz.size(); ++i) {
          ASSERT_NEAR(mz[i], exact[i], 0.5 * unit) << ratio;
          square += std::pow((mz[i] - exact[i]) / unit, 2.0);
        }
        EXPECT_LT(std::sqrt(square / static_cast<double>(mz.size())), 0.15) << ratio << " " << unit;
        for (std::size_t i = 1; i < mz.size(); ++i) ASSERT_GT(mz[i], mz[i - 1]);
      }
}

TEST(RoundedAxis, IsEvenWherePointsLieHalfwayBetweenUnits) {
  for (const double step : {0.125, 0.15}) {
    Values mz;
    for (int i = 0; i < 3000; ++i) mz.push_back(std::round((100.0 + step * i) * 10.0) / 10.0);
    ASSERT_TRUE(TakeRoundingOff(mz));
    for (std::size_t i = 1; i < mz.size(); ++i) EXPECT_NEAR(mz[i] - mz[i - 1], step, 0.02);
  }
}

void ExpectUntouched(const Values& mz, const char* what) {
  Values after = mz;
  EXPECT_FALSE(TakeRoundingOff(after)) << what;
  EXPECT_EQ(after, mz) << what;
}

TEST(RoundedAxis, OtherAxesStayAsTheyAre) {
  ExpectUntouched({}, "no points");
  ExpectUntouched({100.0, 100.1, 100.3, 100.4}, "a few points");
  ExpectUntouched(Even(0.1), "not rounded");
  ExpectUntouched(RoundedTo(0.1, Even(0.1)), "steps of the unit");
  ExpectUntouched(RoundedTo(0.01, Even(0.05)), "steps of five units");
  ExpectUntouched(RoundedTo(0.1, Even(0.77)), "fine rounding");
  Values segments = RoundedTo(0.1, Even(0.1));
  while (segments.size() < 6000) segments.push_back(Rounded(segments.back() + 0.2, 0.1));
  ExpectUntouched(segments, "two segments");
}

TEST(RoundedAxis, MissingPointsAreNotSpreadOut) {
  std::mt19937_64 random(1);
  Values list;
  for (int i = 0; i < 2000; ++i)
    if (std::bernoulli_distribution(0.4)(random)) list.push_back(100.0 + i);
  ExpectUntouched(list, "nominal masses");
  Values holes;
  for (const double x : RoundedTo(0.1, Even(0.125)))
    if (std::bernoulli_distribution(0.9)(random)) holes.push_back(x);
  ExpectUntouched(holes, "zeros left out");
}

}  // namespace
