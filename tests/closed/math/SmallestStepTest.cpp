#include <tslbl/closed/math/SmallestStep.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include <closed/math/SampleArray.h>

using namespace tests;
using TslMath::SmallestStep;

namespace {

double StepOf(const Samples& y) { return SmallestStep(y.data(), y.size()); }

double PlainStep(const Samples& y) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < y.size(); ++i) {
    const double step = std::abs(y[i + 1] - y[i]);
    if (step > 0 && step < least) least = step;
  }
  return std::isinf(least) ? 0 : least;
}

TEST(SmallestStep, OfNoStepIsZero) {
  EXPECT_EQ(StepOf({}), 0);
  EXPECT_EQ(StepOf({4}), 0);
  EXPECT_EQ(StepOf(Samples(100, 4.0)), 0);
}

TEST(SmallestStep, PassesOverEqualNeighbours) { EXPECT_EQ(StepOf({1, 1, 1, 3, 3, 8}), 2); }

TEST(SmallestStep, CountsAStepDownAsAStepUp) { EXPECT_EQ(StepOf({9, 8.5, 12}), 0.5); }

TEST(SmallestStep, IsFoundWhereverItIs) {
  for (std::size_t n = 2; n < 70; ++n) {
    for (std::size_t at = 0; at + 1 < n; ++at) {
      Samples y(n);
      for (std::size_t i = 1; i < n; ++i)
        y[i] = y[i - 1] + (i == at + 1 ? 2 : 3 + static_cast<double>(i % 3));
      ASSERT_EQ(StepOf(y), 2) << at << " of " << n;
    }
  }
}

TEST(SmallestStep, IsFoundAtTheEndOfALongCurve) {
  Samples y(70001, 0.0);
  for (std::size_t i = 1; i < y.size(); ++i) y[i] = y[i - 1] + 3;
  y.back() -= 1;
  EXPECT_EQ(StepOf(y), 2);
}

TEST(SmallestStep, PassesOverNaN) {
  std::mt19937 random(5);
  for (int round = 0; round < 2000; ++round) {
    Samples y(random() % 80);
    for (double& v : y) v = random() % 8 == 0 ? std::nan("") : static_cast<double>(random() % 1000);
    ASSERT_EQ(StepOf(y), PlainStep(y));
  }
}

}  // namespace
