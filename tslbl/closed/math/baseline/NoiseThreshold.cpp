#include <tslbl/closed/math/baseline/NoiseThreshold.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/baseline/BumpHeights.h>

#include <algorithm>
#include <cstddef>
#include <span>

namespace TslMath {
namespace {

constexpr std::size_t kLeastOfNoise = 32;
constexpr std::size_t kLeastInPart = 64;
constexpr std::size_t kParts = 8;
// Noise above a threshold piles up: of all bumps at least this share is at most so many times as high as the
// low ones. Peaks have heights of all orders.
constexpr double kPile = 2.0;
constexpr double kLeastInPile = 0.3;
constexpr double kLowBumps = 0.05;
// The lower end of what a threshold leaves is an edge: between the bumps that these shares are below there is
// little. Above it there is all of noise.
constexpr double kEdgeFrom = 0.02;
constexpr double kEdgeTo = 0.1;
constexpr double kEdge = 1.25;
constexpr double kAboveEdge = 1.3;
constexpr double kMostEqual = 0.25;

// Of heights in units of the threshold.
bool HasEdge(const std::vector<double>& heights) {
  const double edge = Quantile(heights, kEdgeTo);
  return edge < kEdge * Quantile(heights, kEdgeFrom) && Quantile(heights, 0.5) > kAboveEdge * edge;
}

// 0 if the bumps do not pile up.
double LevelOf(const std::vector<double>& heights) {
  const double low = Quantile(heights, kLowBumps);
  const auto piled = std::ranges::count_if(heights, [&](double height) { return height <= kPile * low; });
  return static_cast<double>(piled) >= kLeastInPile * static_cast<double>(heights.size()) ? low : 0.0;
}

// Of as many parts with as many bumps each; nothing unless most of them agree.
NoiseThreshold OfParts(const std::vector<Knot>& bumps, std::size_t parts) {
  NoiseThreshold found;
  std::vector<double> relative;
  relative.reserve(bumps.size());
  for (std::size_t k = 0; k < parts; ++k) {
    const std::size_t begin = bumps.size() * k / parts;
    const std::size_t end = bumps.size() * (k + 1) / parts;
    const std::vector<double> heights = HeightsOf(std::span(bumps).subspan(begin, end - begin));
    const double level = LevelOf(heights);
    if (!(level > 0.0)) continue;
    found.levels.push_back({bumps[(begin + end) / 2].position, level});
    for (const double height : heights) relative.push_back(height / level);
  }
  if (2 * found.levels.size() <= parts) return {};
  // The smallest of counts is an edge, too.
  found.hasEdge = HasEdge(relative) && ShareOfEqual(HeightsOf(bumps)) < kMostEqual;
  return found;
}

}  // namespace

double NoiseThreshold::Least() const {
  return levels.empty() ? 0.0 : std::ranges::min_element(levels, {}, &Knot::level)->level;
}

NoiseThreshold FindNoiseThreshold(const std::vector<Knot>& bumps) {
  if (bumps.size() < kLeastOfNoise) return {};
  NoiseThreshold everywhere = OfParts(bumps, 1);
  if (!everywhere.levels.empty() || bumps.size() < kParts * kLeastInPart) return everywhere;
  return OfParts(bumps, kParts);
}

}  // namespace TslMath
