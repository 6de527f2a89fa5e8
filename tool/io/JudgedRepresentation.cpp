#include <tool/io/JudgedRepresentation.h>

#include <algorithm>
#include <cstddef>

namespace TslTool {
namespace {

// No instrument's profile has so few points across a peak: 0.3 m/z, in linear time-of-flight spectra at high
// m/z one part in 3300.
constexpr double kWidestStep = 0.3;
constexpr double kWidestRelativeStep = 3e-4;
constexpr double kAlike = 1.5;
constexpr std::size_t kTallest = 50;
// Shares of the points that lie evenly between their neighbours.
constexpr double kMost = 0.5;
constexpr double kNearlyAll = 0.9;
constexpr double kFew = 0.25;
constexpr std::size_t kLeastToOverrule = 50;

bool IsEven(const std::vector<double>& mz, std::size_t i) {
  const double left = mz[i] - mz[i - 1];
  const double right = mz[i + 1] - mz[i];
  const double widest = std::max(kWidestStep, kWidestRelativeStep * mz[i]);
  return std::max(left, right) <= widest && left <= kAlike * right && right <= kAlike * left;
}

double EvenShare(const std::vector<double>& mz) {
  std::size_t even = 0;
  for (std::size_t i = 1; i + 1 < mz.size(); ++i) even += IsEven(mz, i) ? 1 : 0;
  return static_cast<double>(even) / static_cast<double>(mz.size() - 2);
}

// The same of the tallest points: where zeros are left out, single counts of the background lie anywhere.
double EvenShareOfTallest(const Scan& scan) {
  const std::size_t inner = scan.mz.size() - 2;
  std::vector<std::size_t> points(inner);
  for (std::size_t i = 0; i < inner; ++i) points[i] = i + 1;
  const std::size_t count = std::min(kTallest, inner);
  const auto taller = [&](std::size_t a, std::size_t b) { return scan.amplitude[a] > scan.amplitude[b]; };
  std::nth_element(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(count - 1), points.end(),
                   taller);
  const auto even = std::count_if(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(count),
                                  [&](std::size_t i) { return IsEven(scan.mz, i); });
  return static_cast<double>(even) / static_cast<double>(count);
}

Scan::Representation OrMark(bool overruled, Scan::Representation judged, Scan::Representation marked) {
  return overruled ? judged : marked;
}

}  // namespace

Scan::Representation JudgedRepresentation(const Scan& scan) {
  const bool isMarked = scan.representation != Scan::Unknown;
  if (scan.mz.size() < 3) return isMarked ? scan.representation : Scan::Profile;
  const bool isLong = scan.mz.size() >= kLeastToOverrule;
  const double all = EvenShare(scan.mz);
  if (scan.representation == Scan::Centroid)
    return OrMark(isLong && all >= kNearlyAll, Scan::Profile, Scan::Centroid);
  if (all >= kMost) return Scan::Profile;
  const double tallest = EvenShareOfTallest(scan);
  if (scan.representation == Scan::Profile)
    return OrMark(isLong && all < kFew && tallest < kFew, Scan::Centroid, Scan::Profile);
  return tallest >= kMost ? Scan::Profile : Scan::Centroid;
}

}  // namespace TslTool
