#include <tool/commands/peaks/ClippedNoise.h>

#include <tool/io/CountStep.h>
#include <algorithm>
#include <cmath>
#include <cstddef>

namespace TslTool {
namespace {

// Of all points. Half of the noise that is even about 0 lies below it.
constexpr double kLeastZeros = 0.2;
constexpr double kMostZeros = 0.7;
// Zeros in a row: two on average where each second point is one by chance, many where there is nothing.
constexpr double kLongestRuns = 4.0;
constexpr double kMostAlike = 0.01;  // of the points above 0, with the next one at the same amplitude

constexpr double kLeastOnes = 0.5;  // of those that counts have

struct Zeros {
  double points = 0.0;
  double runs = 0.0;
};

Zeros ZerosOf(const std::vector<double>& y) {
  Zeros zeros;
  for (std::size_t i = 1; i < y.size(); ++i) {
    if (y[i] != 0.0) continue;
    zeros.points += 1.0;
    if (y[i - 1] != 0.0) zeros.runs += 1.0;
  }
  return zeros;
}

bool AreAlike(const std::vector<double>& y, double aboveZero) {
  double alike = 0.0;
  for (std::size_t i = 1; i < y.size(); ++i)
    if (y[i] > 0.0 && y[i] == y[i - 1]) alike += 1.0;
  return alike > kMostAlike * aboveZero;
}

// Where counts of a mean m leave a zero, the next point is 0 with the probability exp(-m) and a single count
// with m times that. Noise that is wide against its steps is 0 as often, but seldom a single step high.
bool HaveOnesOfCounts(const std::vector<double>& y, double step) {
  double zeros = 0.0;
  double ones = 0.0;
  double others = 0.0;
  for (std::size_t i = 1; i < y.size(); ++i) {
    if (y[i - 1] != 0.0) continue;
    const double steps = y[i] / step;
    ++(steps < 0.5 ? zeros : steps < 1.5 ? ones : others);
  }
  const double share = zeros / (zeros + ones + others);
  return ones >= kLeastOnes * -std::log(share) * zeros;
}

}  // namespace

bool HasClippedNoise(const std::vector<double>& amplitudes) {
  if (std::ranges::any_of(amplitudes, [](double y) { return y < 0.0; })) return false;
  const Zeros zeros = ZerosOf(amplitudes);
  const auto points = static_cast<double>(amplitudes.size());
  if (zeros.points <= kLeastZeros * points || zeros.points > kMostZeros * points) return false;
  if (zeros.points > kLongestRuns * zeros.runs) return false;
  const double step = CountStepOf(amplitudes);
  return step > 0.0 ? !HaveOnesOfCounts(amplitudes, step) : !AreAlike(amplitudes, points - zeros.points);
}

}  // namespace TslTool
