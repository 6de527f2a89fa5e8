#include <tslbl/closed/math/peak/ProminentBumps.h>

#include <tslbl/closed/math/Median.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace TslMath {
namespace {

constexpr std::size_t kMostBumps = 32;
// Of the prominence of the largest.
constexpr double kProminent = 0.05;
constexpr double kLeast = 0.0025;
// Of its height above the middle of the curve.
constexpr double kAlone = 0.7;

struct Landscape {
  std::vector<std::size_t> tops;
  std::vector<double> valleys;  // before, between and after the tops
};

Landscape Survey(const std::vector<double>& y) {
  Landscape land;
  for (std::size_t i = 0;;) {
    while (i + 1 < y.size() && y[i + 1] <= y[i]) ++i;
    land.valleys.push_back(y[i]);
    std::size_t top = i;
    for (; i + 1 < y.size() && y[i + 1] >= y[i]; ++i)
      if (y[i + 1] > y[top]) top = i + 1;
    if (i + 1 >= y.size()) return land;
    land.tops.push_back(top);
  }
}

// The lowest valley between each top and the next higher one before it.
std::vector<double> LowestBefore(const std::vector<double>& tops, const std::vector<double>& valleys) {
  struct Step {
    double height;
    double lowest;
  };
  std::vector<Step> falling;
  std::vector<double> lowest(tops.size());
  for (std::size_t i = 0; i < tops.size(); ++i) {
    lowest[i] = valleys[i];
    for (; !falling.empty() && falling.back().height <= tops[i]; falling.pop_back())
      lowest[i] = std::min(lowest[i], falling.back().lowest);
    falling.push_back({tops[i], lowest[i]});
  }
  return lowest;
}

// Noise on the flanks of a large bump makes bumps as large as small peaks elsewhere.
void LeaveOutSmallOnes(std::vector<Bump>& bumps, const std::vector<double>& y) {
  const double largest = std::ranges::max(bumps, {}, &Bump::prominence).prominence;
  const double middle = Median(y);
  std::erase_if(bumps, [&](Bump& bump) {
    bump.isProminent = bump.prominence >= kProminent * largest;
    const bool isAlone = bump.prominence >= kAlone * (y[bump.at] - middle);
    return !bump.isProminent && !(isAlone && bump.prominence >= kLeast * largest);
  });
}

// How far from the top the curve falls to the level, going by `step`.
double DistanceTo(const std::vector<double>& y, std::size_t top, std::ptrdiff_t step, double level) {
  auto i = static_cast<std::ptrdiff_t>(top);
  const auto end = step < 0 ? std::ptrdiff_t{0} : static_cast<std::ptrdiff_t>(y.size()) - 1;
  const auto at = [&](std::ptrdiff_t k) { return y[static_cast<std::size_t>(k)]; };
  while (i != end && at(i + step) > level) i += step;
  const double whole = std::abs(static_cast<double>(i - static_cast<std::ptrdiff_t>(top)));
  return i == end ? whole : whole + (at(i) - level) / (at(i) - at(i + step));
}

}  // namespace

std::vector<Bump> AllBumps(const std::vector<double>& y) {
  if (y.empty()) return {};
  Landscape land = Survey(y);
  std::vector<double> heights;
  for (const std::size_t top : land.tops) heights.push_back(y[top]);
  const std::vector<double> left = LowestBefore(heights, land.valleys);
  std::ranges::reverse(heights);
  std::ranges::reverse(land.valleys);
  std::vector<double> right = LowestBefore(heights, land.valleys);
  std::ranges::reverse(right);
  std::vector<Bump> bumps;
  for (std::size_t i = 0; i < land.tops.size(); ++i)
    bumps.push_back({land.tops[i], y[land.tops[i]] - std::max(left[i], right[i])});
  return bumps;
}

std::vector<Bump> ProminentBumps(const std::vector<double>& y) {
  std::vector<Bump> bumps = AllBumps(y);
  if (bumps.empty()) return {};
  LeaveOutSmallOnes(bumps, y);
  const std::size_t kept = std::min(bumps.size(), kMostBumps);
  std::ranges::partial_sort(bumps, bumps.begin() + static_cast<std::ptrdiff_t>(kept), std::ranges::greater{},
                            &Bump::prominence);
  bumps.resize(kept);
  return bumps;
}

double WidthAtLevel(const std::vector<double>& y, std::size_t top, double level) {
  return DistanceTo(y, top, -1, level) + DistanceTo(y, top, 1, level);
}

}  // namespace TslMath
