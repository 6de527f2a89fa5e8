#include <tslbl/closed/math/baseline/SegmentGuard.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>

using namespace TslMath;

namespace {

using Levels = std::vector<SegmentLevel>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// "+" for each segment that is left, "-" for each that is not.
std::string Left(Levels levels, std::size_t segmentLength = 250) {
  DropPeakSegments(levels, segmentLength);
  std::string left;
  for (const SegmentLevel& s : levels) left += s.valid ? '+' : '-';
  return left;
}

// The least or greatest value within `reach` of k.
template <class Pick>
double Around(const std::vector<double>& values, std::size_t k, std::size_t reach, Pick pick) {
  double picked = values[k];
  for (std::size_t i = 0; i < values.size(); ++i) {
    if ((i > k ? i - k : k - i) <= reach) picked = pick(picked, values[i]);
  }
  return picked;
}

std::string PlainLeft(const Levels& levels, std::size_t segmentLength) {
  const std::size_t count = levels.size();
  const std::size_t reach = std::min((250 + segmentLength - 1) / segmentLength, (count - 1) / 2);
  const auto least = [](double a, double b) { return std::min(a, b); };
  const auto greatest = [](double a, double b) { return std::max(a, b); };
  double highest = -kInfinity;
  for (const SegmentLevel& s : levels) highest = s.valid ? std::max(highest, s.level) : highest;
  std::vector<double> level, noise, low;
  for (const SegmentLevel& s : levels) {
    level.push_back(s.valid ? s.level : highest);
    noise.push_back(s.valid ? s.noise : kInfinity);
  }
  for (std::size_t k = 0; k < count; ++k) low.push_back(Around(level, k, reach, least));
  std::string left;
  for (std::size_t k = 0; k < count; ++k) {
    const double allowed = Around(low, k, reach, greatest) + 4 * Around(noise, k, reach, least);
    left += levels[k].valid && !(count >= 3 && levels[k].level > allowed) ? '+' : '-';
  }
  return left;
}

TEST(SegmentGuard, DropsASegmentThatAPeakFills) {
  EXPECT_EQ(Left({{5, 1, true}, {6, 1, true}, {50, 1, true}, {5, 1, true}, {4, 1, true}}), "++-++");
}

TEST(SegmentGuard, LeavesFourTimesTheLeastNoiseAround) {
  EXPECT_EQ(Left({{0, 1, true}, {0, 1, true}, {4, 9, true}, {0, 1, true}, {0, 1, true}}), "+++++");
  EXPECT_EQ(Left({{0, 1, true}, {0, 1, true}, {4.1, 9, true}, {0, 1, true}, {0, 1, true}}), "++-++");
}

TEST(SegmentGuard, LeavesARiseThatGoesOn) {
  EXPECT_EQ(Left({{0, 1, true}, {50, 1, true}, {100, 1, true}, {150, 1, true}}), "+++-") << "but at its end";
  EXPECT_EQ(Left({{0, 1, true}, {0, 1, true}, {50, 1, true}, {50, 1, true}, {50, 1, true}}), "+++++");
}

TEST(SegmentGuard, LeavesTwoSegmentsAsTheyAre) { EXPECT_EQ(Left({{0, 1, true}, {90, 1, true}}), "++"); }

TEST(SegmentGuard, DoesNotCountTheNoiseOfAnUntrustedSegment) {
  const Levels levels{{0, 10, true}, {0, 0.1, false}, {30, 10, true}, {0, 10, true}, {0, 10, true}};
  EXPECT_EQ(Left(levels), "+-+++");
}

TEST(SegmentGuard, DoesNotCountTheLevelOfAnUntrustedSegment) {
  EXPECT_EQ(Left({{0, 1, true}, {0, 1, true}, {-90, 1, false}, {0, 1, true}, {0, 1, true}}), "++-++");
  EXPECT_EQ(Left({{0, 1, true}, {0, 1, true}, {900, 1, false}, {50, 1, true}, {0, 1, true}}), "++--+");
}

TEST(SegmentGuard, MakesNoSegmentValid) {
  EXPECT_EQ(Left({{5, 1, false}, {5, 1, false}, {5, 1, false}}), "---");
}

TEST(SegmentGuard, ComparesShortSegmentsOverAsManyPoints) {
  Levels levels(11, {0, 1, true});
  levels[4] = levels[5] = levels[6] = {90, 1, true};
  EXPECT_EQ(Left(levels, 50), "++++---++++");
  EXPECT_EQ(Left(levels, 250), "+++++++++++") << "as wide as three segments";
}

TEST(SegmentGuard, EqualsAPlainSearch) {
  std::mt19937 random(21);
  const auto below = [&](std::uint32_t limit) { return static_cast<double>(random() % limit); };
  for (int round = 0; round < 20000; ++round) {
    Levels levels(1 + random() % 14);
    for (SegmentLevel& s : levels) s = {below(12), below(3), random() % 4 != 0};
    const std::size_t length = std::size_t{1} << random() % 10;
    ASSERT_EQ(Left(levels, length), PlainLeft(levels, length)) << levels.size() << " of " << length;
  }
}

}  // namespace
