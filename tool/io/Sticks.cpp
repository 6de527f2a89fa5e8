#include <tool/io/Sticks.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <set>
#include <vector>

namespace TslTool {
namespace {

constexpr std::size_t kTallest = 50;
constexpr std::size_t kLeast = 5;
constexpr double kNearlyAll = 0.9;

bool StandsAlone(const std::vector<double>& y, std::size_t i) {
  return (i == 0 || y[i - 1] == 0.0) && (i + 1 == y.size() || y[i + 1] == 0.0);
}

// Indices of the tallest points.
std::vector<std::size_t> TallestOf(const std::vector<double>& y) {
  std::vector<std::size_t> points;
  for (std::size_t i = 0; i < y.size(); ++i)
    if (y[i] > 0.0) points.push_back(i);
  const std::size_t count = std::min(kTallest, points.size());
  std::ranges::partial_sort(points, points.begin() + static_cast<std::ptrdiff_t>(count), std::greater(),
                            [&y](std::size_t i) { return y[i]; });
  points.resize(count);
  return points;
}

}  // namespace

bool AreSticks(const Scan& scan) {
  const std::vector<double>& y = scan.amplitude;
  const std::vector<std::size_t> tallest = TallestOf(y);
  if (tallest.size() < kLeast) return false;
  std::set<double> heights;
  std::size_t alone = 0;
  for (const std::size_t i : tallest) {
    heights.insert(y[i]);
    alone += StandsAlone(y, i) ? 1 : 0;
  }
  const auto all = static_cast<double>(tallest.size());
  return static_cast<double>(alone) >= kNearlyAll * all && 2 * heights.size() > tallest.size();
}

}  // namespace TslTool
