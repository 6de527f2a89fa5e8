#include <tool/commands/chrom/FittedShares.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numeric>
#include <random>
#include <vector>

using TslTool::FittedShare;
using TslTool::FittedShares;

namespace {

constexpr double kStep = 0.1;  // s

struct Group {
  std::vector<double> seconds;
  std::vector<double> values;
  std::vector<std::size_t> tops;
  double level = 0.0;
  double noise = 0.0;

  std::vector<FittedShare> Shares() const {
    return FittedShares({seconds, values, tops, level, 2.35, noise});
  }
};

double Bell(double u) { return std::exp(-0.5 * u * u); }

// 20 s, with peaks of standard deviation 1 whose tops are sought at 8 s and `second`.
Group Curve(double second, const std::function<double(double)>& value) {
  Group group;
  for (int i = 0; i < 200; ++i) {
    group.seconds.push_back(kStep * i);
    group.values.push_back(value(kStep * i));
  }
  group.tops = {80, static_cast<std::size_t>(second / kStep)};
  return group;
}

class FittedSharesApart : public testing::TestWithParam<double> {};

TEST_P(FittedSharesApart, AreThoseOfTheGaussians) {
  const double second = 8.0 + GetParam();
  const auto shares =
      Curve(second, [=](double t) { return 100.0 * Bell(t - 8.0) + 25.0 * Bell(t - second); }).Shares();
  ASSERT_EQ(shares.size(), 2U);
  EXPECT_NEAR(shares[0].share, 0.8, 0.002);
  EXPECT_NEAR(shares[0].share + shares[1].share, 1.0, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(StandardDeviations, FittedSharesApart, testing::Values(2.5, 3.0, 3.5, 4.0, 5.0));

TEST(FittedShares, PeaksMayTail) {
  const auto tailing = [](double t) { return Bell(t < 0.0 ? t / 0.9 : t / 1.1); };
  const auto shares =
      Curve(11.5, [&](double t) { return 100.0 * tailing(t - 8.0) + 50.0 * tailing(t - 11.5); }).Shares();
  ASSERT_EQ(shares.size(), 2U);
  EXPECT_NEAR(shares[0].share, 2.0 / 3.0, 0.007);
}

TEST(FittedShares, ErrorsAreThoseOfTheNoise) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> noise(0.0, 1.0);
  double squares = 0.0;
  constexpr int kTrials = 100;
  for (int trial = 0; trial < kTrials; ++trial) {
    Group group = Curve(11.5, [&](double t) {
      const double mean = 5.0 + 1000.0 * Bell(t - 8.0) + 700.0 * Bell(t - 11.5);
      return mean + std::sqrt(mean) * noise(random);
    });
    group.level = 5.0;
    group.noise = std::sqrt(5.0);
    const auto shares = group.Shares();
    ASSERT_EQ(shares.size(), 2U);
    const double all = kStep * (std::accumulate(group.values.begin(), group.values.end(), 0.0) - 5.0 * 200);
    const double z = (shares[1].share * all - 700.0 * std::sqrt(2.0 * M_PI)) / shares[1].error;
    squares += z * z;
  }
  EXPECT_NEAR(std::sqrt(squares / kTrials), 1.0, 0.3);
}

TEST(FittedShares, OfAShapeThatTheSumDoesNotFollowAreNone) {
  const auto square = [](double t) {
    return std::abs(t - 8.0) < 1.5 || std::abs(t - 12.0) < 1.5 ? 100.0 : 0.0;
  };
  EXPECT_TRUE(Curve(12.0, square).Shares().empty());
}

TEST(FittedShares, OfOnePeakOrOfTooManyAreNone) {
  Group one = Curve(12.0, [](double t) { return 100.0 * Bell(t - 8.0); });
  one.tops = {80};
  EXPECT_TRUE(one.Shares().empty());
  Group many = Curve(12.0, [](double t) { return 100.0 * Bell(t - 8.0); });
  many.tops.assign(100, 80);
  EXPECT_TRUE(many.Shares().empty());
}

TEST(FittedShares, OfNothingAreNone) {
  EXPECT_TRUE(Curve(12.0, [](double) { return 0.0; }).Shares().empty());
  EXPECT_TRUE(Curve(12.0, [](double) { return std::nan(""); }).Shares().empty());
}

}  // namespace
