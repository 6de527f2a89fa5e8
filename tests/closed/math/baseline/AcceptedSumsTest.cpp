// Amplitudes, lines and limits are multiples of 1/8, so that every sum is exact in whatever order it is
// taken.
#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/baseline/AcceptedSums.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
// One group, some groups, and more than are summed in one go, a last group that is full and one that is not.
constexpr std::size_t kLengths[] = {1, 2, 3, 4, 5, 8, 37, 4095, 4096, 4097, 8192, 12289, 70001};

Samples Eighths(std::size_t length, std::uint32_t seed) {
  std::mt19937 random(seed);
  Samples values(WholeGroups(length), kNaN);
  for (std::size_t i = 0; i < length; ++i) values[i] = (static_cast<double>(random() % 2001) - 1000) / 8;
  return values;
}

AcceptedSums PlainSums(const Samples& y, const Samples& mean, std::size_t length, const SegmentLine& line,
                       const AcceptanceLimits& limits) {
  AcceptedSums sums;
  for (std::size_t i = 0; i < length; ++i) {
    const double t = static_cast<double>(i) - 0.5 * static_cast<double>(length - 1);
    const double r = y[i] - (line.level + line.slope * t);
    const double m = mean[i] - (line.level + line.slope * t);
    if (!(std::abs(r) <= limits.point && m <= limits.mean)) continue;
    sums.n += 1;
    sums.t += t;
    sums.tt += t * t;
    sums.r += r;
    sums.tr += t * r;
    sums.rr += r * r;
    sums.mm += m < 0 ? m * m : 0;
  }
  return sums;
}

void ExpectEqual(const AcceptedSums& expected, const AcceptedSums& found) {
  EXPECT_EQ(expected.n, found.n);
  EXPECT_EQ(expected.t, found.t);
  EXPECT_EQ(expected.tt, found.tt);
  EXPECT_EQ(expected.r, found.r);
  EXPECT_EQ(expected.tr, found.tr);
  EXPECT_EQ(expected.rr, found.rr);
  EXPECT_EQ(expected.mm, found.mm);
}

void ExpectPlainSums(const Samples& y, const Samples& mean, std::size_t length, const SegmentLine& line,
                     const AcceptanceLimits& limits) {
  SCOPED_TRACE(length);
  ExpectEqual(PlainSums(y, mean, length, line, limits),
              SumAccepted(y.data(), mean.data(), length, line, limits));
}

TEST(AcceptedSums, AreThoseOfEachPoint) {
  for (const std::size_t length : kLengths) {
    ExpectPlainSums(Eighths(length, 1), Eighths(length, 2), length, {3.5, 0}, {80, 60});
    ExpectPlainSums(Eighths(length, 3), Eighths(length, 4), length, {-20, 0.25}, {100, 25});
  }
}

TEST(AcceptedSums, AreThoseOfAllPointsWithoutALimit) {
  for (const std::size_t length : kLengths) {
    ExpectPlainSums(Eighths(length, 5), Eighths(length, 6), length, {0, -0.5}, {kInfinity, kInfinity});
  }
}

TEST(AcceptedSums, TakeAPointAtEitherLimit) {
  const Samples y{3, -3, 3.125, -3.125, 0, 0, 0, 0};
  const Samples mean{0, 0, 0, 0, 2, 2.125, -50, 0};
  const AcceptedSums sums = SumAccepted(y.data(), mean.data(), 8, {0, 0}, {3, 2});
  EXPECT_EQ(sums.n, 5);
  EXPECT_EQ(sums.mm, 2500);
}

TEST(AcceptedSums, PassOverWhatIsNotFinite) {
  for (const std::size_t length : {37U, 4097U}) {
    Samples y = Eighths(length, 7);
    Samples mean = Eighths(length, 8);
    for (std::size_t i = 0; i < length; i += 5) y[i] = i % 2 == 0 ? kNaN : kInfinity;
    for (std::size_t i = 2; i < length; i += 7) mean[i] = i % 2 == 0 ? kNaN : kInfinity;
    ExpectPlainSums(y, mean, length, {1, 0.125}, {90, 70});
  }
}

}  // namespace
