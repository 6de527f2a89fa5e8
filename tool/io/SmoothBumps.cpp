#include <tool/io/SmoothBumps.h>

#include <tool/io/CountStep.h>
#include <tslbl/closed/math/Median.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

namespace TslTool {
namespace {

constexpr std::ptrdiff_t kZerosOf = 10;
constexpr std::size_t kLeastBumps = 40;
// Of single counts, as at the foot of the tallest line, are at least so many.
constexpr std::size_t kLowOf = 10;
constexpr double kSingle = 1.5;
constexpr std::ptrdiff_t kLeastPoints = 3;  // above half of the height
// The sizes of the second differences of a Gaussian add up to this times its area, over the square of its
// width in points: four times its steepest slope.
constexpr double kOfGaussian = 5.4;
constexpr double kMost = 2.0;  // 0.4 to 1.8 where a filter ran, 3.5 and more of counts

struct Bump {
  std::span<const double> points;
  double height;
};

std::vector<Bump> BumpsOf(const std::vector<double>& y) {
  std::vector<Bump> bumps;
  for (auto begin = y.begin(); begin != y.end();) {
    begin = std::find_if(begin, y.end(), [](double value) { return value > 0.0; });
    const auto end = std::find_if(begin, y.end(), [](double value) { return !(value > 0.0); });
    if (begin != end) bumps.push_back({{begin, end}, *std::max_element(begin, end)});
    begin = end;
  }
  return bumps;
}

// How much more it bends than a Gaussian as wide.
double RoughnessOf(const Bump& bump) {
  const auto across =
      std::ranges::count_if(bump.points, [&](double value) { return value >= 0.5 * bump.height; });
  if (across < kLeastPoints) return std::numeric_limits<double>::infinity();
  const std::span<const double> y = bump.points;
  const auto at = [&y](std::size_t i) { return i < y.size() ? y[i] : 0.0; };
  double bends = y.front() + y.back();  // of the zeros beside it
  double area = 0.0;
  for (std::size_t i = 0; i < y.size(); ++i) {
    bends += std::abs(at(i - 1) - 2.0 * y[i] + at(i + 1));
    area += y[i];
  }
  const auto width = static_cast<double>(across);
  return bends / area * width * width / kOfGaussian;
}

}  // namespace

bool AreBumpsSmooth(const std::vector<double>& y) {
  if (kZerosOf * std::ranges::count(y, 0.0) < std::ssize(y)) return false;
  std::vector<Bump> bumps = BumpsOf(y);
  if (bumps.size() < kLeastBumps) return false;
  std::ranges::sort(bumps, {}, &Bump::height);
  if (bumps[bumps.size() / kLowOf].height <= kSingle * CountStepOf(y)) return false;
  std::vector<double> roughness;
  for (std::size_t i = bumps.size() / 2; i < bumps.size() - bumps.size() / 10; ++i)
    roughness.push_back(RoughnessOf(bumps[i]));
  return TslMath::Median(std::move(roughness)) < kMost;
}

}  // namespace TslTool
