// Valley following in its plainest form: the valleys of each segment sorted, and their corners joined.
#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BackgroundKernel.h>
#include <tslbl/closed/math/baseline/Polyline.h>
#include <tslbl/closed/math/baseline/SegmentGuard.h>
#include <tslbl/closed/math/baseline/Segments.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>

#include <closed/math/baseline/BaselineCheck.h>

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Points of the segment that are not above either neighbour.
std::vector<std::size_t> PlainValleys(const Samples& z, std::size_t begin, std::size_t end) {
  std::vector<std::size_t> valleys;
  for (std::size_t i = begin; i < end; ++i) {
    if (i == 0 || i + 1 == z.size() || !std::isfinite(z[i])) continue;
    if (z[i] <= z[i - 1] && z[i] <= z[i + 1]) valleys.push_back(i);
  }
  return valleys;
}

// At the mean place of the lower half of them, on the height of their median.
Knot PlainCorner(const Samples& z, const std::vector<std::size_t>& valleys) {
  Samples levels;
  for (const std::size_t i : valleys) levels.push_back(z[i]);
  std::sort(levels.begin(), levels.end());
  levels.resize((levels.size() + 1) / 2);
  double places = 0, count = 0;
  for (const std::size_t i : valleys) {
    if (z[i] > levels.back()) continue;
    places += static_cast<double>(i);
    count += 1;
  }
  const std::size_t half = levels.size() / 2;
  return {places / count, levels.size() % 2 == 1 ? levels[half] : (levels[half - 1] + levels[half]) / 2};
}

std::vector<Knot> PlainCorners(const Samples& z, std::size_t segSize) {
  const Segments segments(z.size(), segSize);
  std::vector<Knot> corners;
  for (std::size_t k = 0; k < segments.Count(); ++k) {
    const auto valleys = PlainValleys(z, segments.Begin(k), segments.Begin(k + 1));
    const bool last = k + 1 == segments.Count();
    if (!valleys.empty()) {
      corners.push_back(PlainCorner(z, valleys));
    } else if (k == 0 && std::isfinite(z.front())) {
      corners.push_back({0, z.front()});
    } else if (k > 0 && last && std::isfinite(z.back())) {
      corners.push_back({static_cast<double>(z.size() - 1), z.back()});
    }
  }
  return corners;
}

// From the steps of up to ten points to the left of a corner and eleven to its right.
double PlainNoise(const Samples& y, double position, double floor) {
  const auto middle = static_cast<std::ptrdiff_t>(position);
  double sum = 0, count = 0;
  for (std::ptrdiff_t i = middle - 10; i < middle + 11; ++i) {
    if (i < 0 || i + 1 >= static_cast<std::ptrdiff_t>(y.size())) continue;
    const double step = y[static_cast<std::size_t>(i + 1)] - y[static_cast<std::size_t>(i)];
    sum += step * step;
    count += 1;
  }
  return std::max(std::sqrt(sum / (2 * count)), floor);
}

struct Figures {
  Samples baseline, noise;

  explicit Figures(std::size_t n) : baseline(n), noise(n) {}
  BaselineAndNoise Out() { return {baseline.data(), noise.data()}; }
};

Figures PlainFollowValleys(const Samples& y, std::uint32_t segSize) {
  const double quantum = SmallestStep(y.data(), y.size());
  Samples z(y.size());
  SmoothGaussian(y.data(), Size(y), 0, Size(y), 5, z.data());
  const std::vector<Knot> corners = PlainCorners(z, segSize);
  std::vector<SegmentLevel> levels;
  for (const Knot& c : corners) levels.push_back({c.level, PlainNoise(y, c.position, quantum / 2), true});
  DropPeakSegments(levels, segSize);
  std::vector<Knot> kept;
  for (std::size_t k = 0; k < corners.size(); ++k)
    if (levels[k].valid) kept.push_back(corners[k]);
  if (kept.empty()) kept.push_back({0, 0});
  Samples shape(y.size());
  DrawPolyline(kept, y.size(), shape.data());
  Figures figures(y.size());
  FitBackground(y.data(), shape.data(), Size(y), quantum, {std::max(segSize, 250U), 5, 3}, figures.Out());
  return figures;
}

void ExpectPlain(const Samples& y, std::uint32_t segSize) {
  const Figures expected = PlainFollowValleys(y, segSize);
  Figures found(y.size());
  FollowValleys(y.data(), Size(y), segSize, found.Out());
  EXPECT_LE(WorstDifference(found.baseline, expected.baseline), 1e-9) << segSize;
  EXPECT_LE(WorstDifference(found.noise, expected.noise), 1e-9) << segSize;
}

// Dense counts: few ones have the background of shots.
const SpectrumRecipe kRecipes[] = {
    {Background::Flat, 20, 0.1}, {Background::Flat, 20, 1}, {Background::Hump, 0, 0.3}};

TEST(FollowValleys, EqualsItsPlainForm) {
  for (const SpectrumRecipe& recipe : kRecipes) {
    const Samples y = Simulate(recipe, 11, 6003).y;
    for (const std::uint32_t segSize : {3U, 10U, 100U, 250U, 600U, 6003U}) ExpectPlain(y, segSize);
  }
}

TEST(FollowValleys, EqualsItsPlainFormOnSmoothedData) {
  for (const SpectrumRecipe& recipe : kRecipes) {
    const Samples y = Simulate(recipe, 12, 6003).y;
    Samples smooth(y.size());
    SmoothSavitzkyGolay(y.data(), Size(y), 0, Size(y), 15, 2, smooth.data());
    for (const std::uint32_t segSize : {10U, 250U}) ExpectPlain(smooth, segSize);
  }
}

// Slopes without a valley, at whose ends the last points serve.
TEST(FollowValleys, EqualsItsPlainFormOnSlopes) {
  for (const double slope : {0.5, -0.5}) ExpectPlain(Line(3000, 2000, slope), 250);
  Samples hill = Line(3000, 0, 0.5);
  std::copy(hill.begin(), hill.begin() + 1500, hill.rbegin());
  ExpectPlain(hill, 250);
}

TEST(FollowValleys, EqualsItsPlainFormAroundSamplesThatAreNotFinite) {
  Samples y = Simulate(kRecipes[0], 13, 6003).y;
  for (std::size_t i = 0; i < 300; ++i) y[i] = kNaN;
  for (std::size_t i = 5800; i < y.size(); ++i) y[i] = kNaN;
  y[2000] = kNaN;
  ExpectPlain(y, 250);
  ExpectPlain(y, 100);
}

}  // namespace
