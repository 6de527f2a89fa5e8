#include <tool/io/IsotopeSteps.h>

#include <tool/io/RoundedAxis.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>

namespace TslTool {
namespace {

constexpr double kApart = 1.0025;  // Da, mean distance of isotopes
constexpr double kOff = 0.004;     // of the step
constexpr double kAlike = 1.5;
constexpr double kNearest = 0.02;  // m/z
constexpr double kFarthest = 0.3;
constexpr std::size_t kLeastInRow = 3;
constexpr std::size_t kLeastCharges = 3;
constexpr double kNearlyAll = 0.75;
constexpr double kMost = 0.5;
constexpr double kOffGrid = 0.04;  // steps

// Index behind the last point of the row that begins here.
std::size_t EndOfRow(const std::vector<double>& mz, std::size_t begin) {
  std::size_t end = begin + 1;
  for (; end < mz.size(); ++end) {
    const double step = mz[end] - mz[end - 1];
    const double first = mz[begin + 1] - mz[begin];
    if (step < kNearest || step > kFarthest || step > kAlike * first || first > kAlike * step) break;
  }
  return end;
}

// 0 if the step of the row is that of no charge.
long ChargeOf(double length, std::size_t points, double rounding) {
  const double charge = kApart / length * static_cast<double>(points - 1);
  const double nearest = std::round(charge);
  const double off = kOff + 0.5 * rounding / length;
  return std::abs(charge - nearest) <= off * charge ? std::lround(nearest) : 0;
}

// Of a grid whose zeros were left out, all steps are multiples of the least one.
bool AreOfAGrid(const std::vector<double>& steps) {
  const double least = *std::ranges::min_element(steps);
  const auto multiples = std::ranges::count_if(
      steps, [&](double step) { return std::abs(step / least - std::round(step / least)) <= kOffGrid; });
  return static_cast<double>(multiples) >= kNearlyAll * static_cast<double>(steps.size());
}

}  // namespace

bool FollowAsIsotopes(const std::vector<double>& mz) {
  const double rounding = RoundingUnit(mz);
  std::size_t inRows = 0;
  std::size_t ofCharges = 0;
  std::set<long> charges;
  std::vector<double> steps;
  for (std::size_t begin = 0; begin + 1 < mz.size();) {
    const std::size_t end = EndOfRow(mz, begin);
    const std::size_t points = end - begin;
    if (points < kLeastInRow) {
      ++begin;
      continue;
    }
    const double length = mz[end - 1] - mz[begin];
    inRows += points;
    for (std::size_t i = begin + 1; i < end; ++i) steps.push_back(mz[i] - mz[i - 1]);
    if (const long charge = ChargeOf(length, points, rounding)) {
      ofCharges += points;
      charges.insert(charge);
    }
    begin = end;
  }
  return charges.size() >= kLeastCharges &&
         static_cast<double>(ofCharges) >= kNearlyAll * static_cast<double>(inRows) &&
         static_cast<double>(inRows) >= kMost * static_cast<double>(mz.size()) && !AreOfAGrid(steps);
}

}  // namespace TslTool
