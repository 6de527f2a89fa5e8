#include <tslbl/closed/math/peak/TypicalWidth.h>

#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace TslMath {
namespace {

constexpr std::size_t kMostBumps = 32;
constexpr double kLeastProminence = 0.05;  // of the largest
// By how much the next filters may change a width: one, and two together.
constexpr double kNextChange = 0.15;
constexpr double kSecondChange = 0.35;
constexpr std::uint32_t kFilters[] = {2, 4, 8, 16, 32, 64, 128};

struct Bump {
  std::size_t at;
  double prominence;
};

// The lowest value between each point and the next higher one on its left.
std::vector<double> LowestOnTheLeft(const std::vector<double>& y) {
  struct Step {
    double height;
    double lowest;
  };
  std::vector<Step> falling;
  std::vector<double> lowest(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) {
    lowest[i] = y[i];
    for (; !falling.empty() && falling.back().height <= y[i]; falling.pop_back())
      lowest[i] = std::min(lowest[i], falling.back().lowest);
    falling.push_back({y[i], lowest[i]});
  }
  return lowest;
}

std::vector<double> LowestOnTheRight(std::vector<double> y) {
  std::ranges::reverse(y);
  std::vector<double> lowest = LowestOnTheLeft(y);
  std::ranges::reverse(lowest);
  return lowest;
}

// The most prominent local maxima, the largest first.
std::vector<Bump> FindBumps(const std::vector<double>& y) {
  const std::vector<double> left = LowestOnTheLeft(y);
  const std::vector<double> right = LowestOnTheRight(y);
  std::vector<Bump> bumps;
  for (std::size_t i = 1; i + 1 < y.size(); ++i)
    if (y[i] > y[i - 1] && y[i] >= y[i + 1] && y[i] > right[i])
      bumps.push_back({i, y[i] - std::max(left[i], right[i])});
  const std::size_t kept = std::min(bumps.size(), kMostBumps);
  std::ranges::partial_sort(bumps, bumps.begin() + static_cast<std::ptrdiff_t>(kept), std::ranges::greater{},
                            &Bump::prominence);
  bumps.resize(kept);
  std::erase_if(bumps,
                [&](const Bump& b) { return !(b.prominence >= kLeastProminence * bumps[0].prominence); });
  return bumps;
}

// How far from the top the curve falls to the level, going by `step`; the level lies above the curve's
// lowest.
double DistanceTo(const std::vector<double>& y, std::size_t top, std::ptrdiff_t step, double level) {
  auto i = static_cast<std::ptrdiff_t>(top);
  const auto end = step < 0 ? std::ptrdiff_t{0} : static_cast<std::ptrdiff_t>(y.size()) - 1;
  const auto at = [&](std::ptrdiff_t k) { return y[static_cast<std::size_t>(k)]; };
  while (i != end && at(i + step) > level) i += step;
  const double whole = std::abs(static_cast<double>(i - static_cast<std::ptrdiff_t>(top)));
  return i == end ? whole : whole + (at(i) - level) / (at(i) - at(i + step));
}

double HalfWidth(const std::vector<double>& y, const Bump& bump) {
  const double level = y[bump.at] - 0.5 * bump.prominence;
  return DistanceTo(y, bump.at, -1, level) + DistanceTo(y, bump.at, 1, level);
}

double WidthOfBumps(const std::vector<double>& y) {
  struct Weighted {
    double width;
    double weight;
  };
  std::vector<Weighted> widths;
  for (const Bump& bump : FindBumps(y)) widths.push_back({HalfWidth(y, bump), std::sqrt(bump.prominence)});
  if (widths.empty()) return 0.0;
  std::ranges::sort(widths, {}, &Weighted::width);
  double half = 0.5 * std::accumulate(widths.begin(), widths.end(), 0.0,
                                      [](double sum, const Weighted& w) { return sum + w.weight; });
  for (const Weighted& w : widths)
    if ((half -= w.weight) <= 0.0) return w.width;
  return widths.back().width;
}

// The width without the share of the filter that the curve is looked at through.
double WidthThrough(std::uint32_t filter, const std::vector<double>& y) {
  const auto n = static_cast<std::uint32_t>(y.size());
  std::vector<double> filtered(n);
  SmoothGaussian(y.data(), n, 0, n, filter, filtered.data());
  const double width = WidthOfBumps(filtered);
  const double share = filter;
  return std::sqrt(std::max(width * width - share * share, 0.0));
}

std::vector<double> FiniteSamples(const double* y, std::uint32_t n) {
  std::vector<double> samples(y, y + n);
  double lowest = std::numeric_limits<double>::infinity();
  for (const double value : samples)
    if (std::isfinite(value)) lowest = std::min(lowest, value);
  for (double& value : samples)
    if (!std::isfinite(value)) value = lowest;
  return samples;
}

}  // namespace

double TypicalPeakWidth(const double* y, std::uint32_t n) {
  const std::vector<double> samples = FiniteSamples(y, n);
  double width = WidthOfBumps(samples);
  double next = WidthThrough(kFilters[0], samples);
  for (std::size_t k = 1; k < std::size(kFilters); ++k) {
    const double second = WidthThrough(kFilters[k], samples);
    const bool isConfirmed =
        std::abs(next - width) <= kNextChange * width && std::abs(second - width) <= kSecondChange * width;
    if (width > 0.0 && isConfirmed) return width;
    width = std::exchange(next, second);
  }
  return 0.0;
}

}  // namespace TslMath
