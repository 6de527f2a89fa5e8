#include <tslbl/curve/FilterWeights.h>

#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/SmoothPasses.h>
#include <cmath>
#include <numeric>

namespace TslBL {
namespace {

constexpr double kRounding = 1e-9;
constexpr std::size_t kMostReach = 100'000;  // points

// On each side.
std::size_t ZerosAtTheEnds(const std::vector<double>& weights) {
  std::size_t zeros = 0;
  while (2 * zeros + 1 < weights.size() && weights[zeros] == 0.0 &&
         weights[weights.size() - 1 - zeros] == 0.0)
    ++zeros;
  return zeros;
}

}  // namespace

std::vector<double> QFilterWeights(const SmoothParams& smooth) {
  if (smooth.Steps.size() != 1) return {};
  const std::uint32_t width = smooth.Steps.front().Size;
  const std::size_t reach = std::size_t{smooth.Passes} * (2 * std::size_t{width} + 2);
  if (reach > kMostReach) return {};
  // The response must not reach the ends, where windows are shorter.
  std::vector<double> point(4 * reach + 1, 0.0);
  point[2 * reach] = 1.0;
  const auto spread = SmoothPasses(smooth, {{0, static_cast<std::uint32_t>(point.size()), width}}, point);
  if (!spread) return {};
  if (std::abs(std::reduce(spread->begin(), spread->end()) - 1.0) > kRounding) return {};
  const auto ends = static_cast<std::ptrdiff_t>(ZerosAtTheEnds(*spread));
  return {spread->begin() + ends, spread->end() - ends};
}

}  // namespace TslBL
