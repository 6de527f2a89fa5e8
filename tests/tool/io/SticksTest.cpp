#include <tool/io/Sticks.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tests {
namespace {

using TslTool::AreSticks;
using TslTool::Scan;

// So many, with a zero at this distance to both sides of each.
Scan Sticks(std::size_t count, double distance) {
  Scan scan;
  for (std::size_t i = 0; i < count; ++i) {
    const double mz = 100.0 + 3.7 * static_cast<double>(i) + std::sqrt(static_cast<double>(i));
    scan.mz.insert(scan.mz.end(), {mz - distance, mz, mz + distance});
    scan.amplitude.insert(scan.amplitude.end(),
                          {0.0, 10.0 + 7.0 * std::pow(static_cast<double>(i), 1.5), 0.0});
  }
  return scan;
}

Scan Counts(double mean, double height) {
  std::mt19937_64 random(1);
  Scan scan;
  for (int i = 0; i < 5000; ++i) {
    const double u = (i % 500 - 250) / 4.0;
    scan.mz.push_back(100.0 + 0.05 * i);
    scan.amplitude.push_back(std::poisson_distribution<int>(mean + height * std::exp(-0.5 * u * u))(random));
  }
  return scan;
}

TEST(Sticks, HaveZerosOnBothSides) {
  for (const double distance : {1e-4, 0.001, 0.01, 0.05}) EXPECT_TRUE(AreSticks(Sticks(200, distance)));
  EXPECT_TRUE(AreSticks(Sticks(5, 0.01)));
}

TEST(Sticks, MayShareAZero) {
  Scan scan;
  for (int i = 0; i < 40; ++i) {
    scan.mz.push_back(100.0 + i);
    scan.amplitude.push_back(i % 2 == 0 ? 0.0 : 10.0 + i);
  }
  EXPECT_TRUE(AreSticks(scan));
}

TEST(Sticks, AreNoCounts) {
  for (const double mean : {0.001, 0.01, 0.1})
    for (const double height : {0.0, 5.0, 100.0}) EXPECT_FALSE(AreSticks(Counts(mean, height))) << mean;
}

TEST(Sticks, AreMoreThanFour) {
  EXPECT_FALSE(AreSticks(Sticks(4, 0.01)));
  EXPECT_FALSE(AreSticks({}));
}

}  // namespace
}  // namespace tests
