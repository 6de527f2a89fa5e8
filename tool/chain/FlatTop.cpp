#include <tool/chain/FlatTop.h>

#include <tslbl/closed/math/SmallestStep.h>
#include <algorithm>

namespace TslTool {
namespace {

constexpr std::ptrdiff_t kFlat = 4;
constexpr double kSteps = 1.5;

}  // namespace

bool HasFlatTop(std::span<const double> amplitudes) { return FindFlatTop(amplitudes).has_value(); }

std::optional<std::size_t> FindFlatTop(std::span<const double> amplitudes) {
  const auto highest = std::ranges::max_element(amplitudes);
  const auto isLower = [&](double amplitude) { return amplitude < *highest; };
  // Of a level curve there is nothing lower.
  for (auto from = highest; from != amplitudes.end();) {
    const auto to = std::find_if(from, amplitudes.end(), isLower);
    if (from != amplitudes.begin() && to != amplitudes.end() && to - from >= kFlat) {
      const double rounding = kSteps * TslMath::SmallestStep(amplitudes.data(), amplitudes.size());
      if (*highest - std::max(from[-1], *to) > rounding)
        return static_cast<std::size_t>(from - amplitudes.begin());
    }
    from = std::find(to, amplitudes.end(), *highest);
  }
  return std::nullopt;
}

}  // namespace TslTool
