#include <tool/commands/peaks/ClippedNoise.h>

#include <tool/io/CountStep.h>
#include <algorithm>
#include <cstddef>

namespace TslTool {
namespace {

// Of all points. Half of the noise that is even about 0 lies below it.
constexpr double kLeastZeros = 0.2;
constexpr double kMostZeros = 0.7;
// Zeros in a row: two on average where each second point is one by chance, many where there is nothing.
constexpr double kLongestRuns = 4.0;
constexpr double kMostAlike = 0.01;  // of the points above 0, with the next one at the same amplitude

}  // namespace

bool HasClippedNoise(const LoadedSpectrum& loaded) {
  const std::vector<double>& y = loaded.measured;
  std::size_t zeros = 0;
  std::size_t runs = 0;
  std::size_t alike = 0;
  for (std::size_t i = 1; i < y.size(); ++i) {
    if (y[i] < 0.0) return false;
    if (y[i] == 0.0) {
      ++zeros;
      runs += y[i - 1] != 0.0;
    } else {
      alike += y[i] == y[i - 1];
    }
  }
  const auto points = static_cast<double>(y.size());
  const auto count = static_cast<double>(zeros);
  if (count < kLeastZeros * points || count > kMostZeros * points) return false;
  if (count > kLongestRuns * static_cast<double>(runs)) return false;
  if (static_cast<double>(alike) > kMostAlike * (points - count)) return false;
  return loaded.countAmpl == 0.0 && CountStepOf(y) == 0.0;
}

}  // namespace TslTool
