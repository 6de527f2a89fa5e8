#include <tool/io/RoundedAxis.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <utility>

namespace TslTool {
namespace {

constexpr std::size_t kLeastPoints = 50;
constexpr int kMostDecimals = 6;
constexpr double kOfSingle = 6e-8;  // relative, of values that were single precision once
constexpr double kSure = 0.2;       // units
constexpr double kCoarse = 4.5;     // units; rounding changes longer steps by a tenth at most
constexpr double kWithin =
    0.8;  // units: half of one, and where halves are rounded up and down a quarter more
constexpr std::size_t kBeside = 64;

bool AreMultiples(const std::vector<double>& mz, double unit) {
  return std::ranges::all_of(mz, [unit](double x) {
    const double error = kOfSingle * x;
    return error < kSure * unit && std::abs(x - std::round(x / unit) * unit) <= error;
  });
}

// Where the line through the points about the index has it.
double OnLine(const std::vector<double>& mz, std::size_t index) {
  const std::size_t begin = index - std::min(index, kBeside);
  const std::size_t end = std::min(index + kBeside + 1, mz.size());
  const double middle = 0.5 * static_cast<double>(begin + end - 1);
  double sum = 0.0;
  double product = 0.0;
  double square = 0.0;
  for (std::size_t i = begin; i < end; ++i) {
    const double u = static_cast<double>(i) - middle;
    const double x = mz[i] - mz[index];
    sum += x;
    product += u * x;
    square += u * u;
  }
  const double mean = sum / static_cast<double>(end - begin);
  return mz[index] + mean + product / square * (static_cast<double>(index) - middle);
}

bool IsCoarse(const std::vector<double>& mz, double unit) {
  const double units = (mz.back() - mz.front()) / (unit * static_cast<double>(mz.size() - 1));
  return units < kCoarse && std::abs(units - std::round(units)) * static_cast<double>(mz.size()) > 1.0;
}

}  // namespace

double RoundingUnit(const std::vector<double>& mz) {
  for (int decimals = 0; decimals <= kMostDecimals; ++decimals) {
    const double unit = std::pow(10.0, -decimals);
    if (AreMultiples(mz, unit)) return unit;
  }
  return 0.0;
}

bool TakeRoundingOff(std::vector<double>& mz) {
  if (mz.size() < kLeastPoints) return false;
  const double unit = RoundingUnit(mz);
  if (!(unit > 0.0) || !IsCoarse(mz, unit)) return false;
  std::vector<double> restored;
  restored.reserve(mz.size());
  for (std::size_t i = 0; i < mz.size(); ++i) {
    restored.push_back(OnLine(mz, i));
    if (!(std::abs(restored[i] - mz[i]) <= kWithin * unit)) return false;
  }
  if (std::ranges::adjacent_find(restored, std::greater_equal<>()) != restored.end()) return false;
  mz = std::move(restored);
  return true;
}

}  // namespace TslTool
