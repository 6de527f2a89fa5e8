#include <tool/io/JudgedRepresentation.h>

#include <tool/io/IsotopeSteps.h>
#include <tool/io/RoundedAxis.h>
#include <tool/io/Sticks.h>
#include <tslbl/closed/math/peak/TypicalWidth.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

// Beyond these no instrument's profile has points enough across a peak: 0.3 m/z, in linear time-of-flight
// spectra at high m/z one part in 3300.
constexpr double kWidestStep = 0.3;
constexpr double kWidestRelativeStep = 3e-4;
constexpr double kAlike = 1.5;
constexpr double kSame = 1.1;
constexpr double kOffAsIsotopes = 0.004;  // of two steps
// Isotopes are evenly spaced, too, but for the errors of their masses.
constexpr double kVerySame = 1.005;
constexpr std::size_t kTallest = 50;
// Shares of the points that lie evenly between their neighbours.
constexpr double kMost = 0.5;
constexpr double kNearlyAll = 0.9;
constexpr double kFew = 0.25;
// Of those the share that lies in the very middle: 0.96 and more in profiles, 0.5 and less in lists.
constexpr double kSmooth = 0.75;
constexpr std::size_t kLeastEven = 10;
// Steps of an axis that is rounded come in a few sizes.
constexpr std::size_t kRounded = 16;
constexpr double kSizeUnit = 1e-6;  // m/z
constexpr std::size_t kLeastToOverrule = 50;
constexpr double kNominalStep = 0.9;
// Units of polymers lie farther apart.
constexpr double kCoarsest = 10.0;
constexpr double kCoarsestRelative = 3e-3;
// m/z; isotopes of a charge below 50 lie farther apart.
constexpr double kCloserThanIsotopes = 0.02;
constexpr double kTall = 0.1;      // of the tallest point
constexpr double kWidePeak = 5.0;  // points

bool IsMiddle(const std::vector<double>& mz, std::size_t i, double alike = kAlike) {
  const double left = mz[i] - mz[i - 1];
  const double right = mz[i + 1] - mz[i];
  return left <= alike * right && right <= alike * left;
}

bool IsEven(const std::vector<double>& mz, std::size_t i) {
  const double widest = std::max(kWidestStep, kWidestRelativeStep * mz[i]);
  return std::max(mz[i] - mz[i - 1], mz[i + 1] - mz[i]) <= widest && IsMiddle(mz, i);
}

template <class Judge>
double ShareOf(const std::vector<double>& mz, Judge isGood) {
  std::size_t good = 0;
  for (std::size_t i = 1; i + 1 < mz.size(); ++i) good += isGood(mz, i) ? 1 : 0;
  return static_cast<double>(good) / static_cast<double>(mz.size() - 2);
}

// Far from even, where isotopes may lie as close, are the errors of their masses already.
bool IsSmooth(const std::vector<double>& mz, std::size_t i, double rounding) {
  const double left = mz[i] - mz[i - 1];
  const double right = mz[i + 1] - mz[i];
  const bool mayBeIsotopes = left + right > 2.0 * kCloserThanIsotopes;
  return IsMiddle(mz, i, kSame) &&
         (!mayBeIsotopes || std::abs(left - right) <= kOffAsIsotopes * (left + right) + rounding);
}

// Peaks of a list that lie as close as the points of a profile, as isotopes of high charge do, lie
// irregularly.
bool IsScattered(const std::vector<double>& mz) {
  std::size_t even = 0;
  std::size_t smooth = 0;
  std::set<long long> sizes;
  const double rounding = 2.0 * RoundingUnit(mz);
  for (std::size_t i = 1; i + 1 < mz.size(); ++i) {
    if (!IsEven(mz, i)) continue;
    ++even;
    if (IsSmooth(mz, i, rounding)) ++smooth;
    if (sizes.size() <= kRounded) sizes.insert(std::llround((mz[i] - mz[i - 1]) / kSizeUnit));
  }
  return even >= kLeastEven && sizes.size() > std::min(kRounded, even / 2) &&
         static_cast<double>(smooth) < kSmooth * static_cast<double>(even);
}

// A top among points as close as no isotopes are, which follow each other at a regular spacing and fall to
// both sides.
bool IsTopOfProfile(const Scan& scan, std::size_t i) {
  if (i < 2 || i + 2 >= scan.mz.size() || scan.mz[i + 2] - scan.mz[i - 2] > 4.0 * kCloserThanIsotopes)
    return false;
  const std::vector<double>& y = scan.amplitude;
  return IsMiddle(scan.mz, i - 1, kSame) && IsMiddle(scan.mz, i, kSame) && IsMiddle(scan.mz, i + 1, kSame) &&
         y[i - 2] < y[i - 1] && y[i + 1] > y[i + 2];
}

// Whatever is left of the noise between them, where a program cut it off: tall peaks decide.
bool HasTopsOfProfile(const Scan& scan) {
  const std::vector<double>& y = scan.amplitude;
  const double tall = kTall * *std::ranges::max_element(y);
  std::size_t tops = 0;
  std::size_t ofProfile = 0;
  for (std::size_t i = 1; i + 1 < y.size(); ++i) {
    if (y[i] < tall || y[i] < y[i - 1] || y[i] <= y[i + 1]) continue;
    ++tops;
    ofProfile += IsTopOfProfile(scan, i) ? 1 : 0;
  }
  return tops > 0 && static_cast<double>(ofProfile) >= kMost * static_cast<double>(tops);
}

// A coarse grid, as of a trace over time or of an instrument that steps by half a peak. Lists of nominal
// masses have steps of 1 and no peak as wide; those of polymers have.
bool IsCoarseProfile(const Scan& scan) {
  const auto isMiddle = [](const std::vector<double>& mz, std::size_t i) { return IsMiddle(mz, i); };
  if (ShareOf(scan.mz, isMiddle) < kNearlyAll) return false;
  const double step = (scan.mz.back() - scan.mz.front()) / static_cast<double>(scan.mz.size() - 1);
  if (scan.representation == Scan::Profile && step < kNominalStep) return true;
  if (step > std::max(kCoarsest, kCoarsestRelative * scan.mz.back())) return false;
  return TslMath::TypicalPeakWidth(scan.amplitude.data(),
                                   static_cast<std::uint32_t>(scan.amplitude.size())) >= kWidePeak;
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

bool IsVerySmooth(const std::vector<double>& mz) {
  return ShareOf(mz, [](const auto& all, std::size_t i) { return IsMiddle(all, i, kVerySame); }) >=
         kNearlyAll;
}

Scan::Representation OrMark(bool overruled, Scan::Representation judged, Scan::Representation marked) {
  return overruled ? judged : marked;
}

Scan::Representation Judge(const Scan& scan) {
  const bool isMarked = scan.representation != Scan::Unknown;
  if (scan.mz.size() < 3) return isMarked ? scan.representation : Scan::Profile;
  const bool isLong = scan.mz.size() >= kLeastToOverrule;
  const double all = ShareOf(scan.mz, IsEven);
  if (scan.representation == Scan::Centroid)
    return OrMark(isLong && all >= kNearlyAll && IsVerySmooth(scan.mz), Scan::Profile, Scan::Centroid);
  if ((isLong || !isMarked) && AreSticks(scan)) return Scan::Centroid;
  const bool isOfIsotopes = (isLong || !isMarked) && FollowAsIsotopes(scan.mz);
  const bool isOfPeaks = isOfIsotopes || (!isMarked && IsScattered(scan.mz));
  if (isOfPeaks && !HasTopsOfProfile(scan)) return Scan::Centroid;
  if (all >= kMost || IsCoarseProfile(scan)) return Scan::Profile;
  const double tallest = EvenShareOfTallest(scan);
  if (scan.representation == Scan::Profile)
    return OrMark(isLong && all < kFew && tallest < kFew, Scan::Centroid, Scan::Profile);
  return tallest >= kMost ? Scan::Profile : Scan::Centroid;
}

}  // namespace

Scan::Representation JudgedRepresentation(const Scan& scan) {
  std::vector<double> mz = scan.mz;
  if (!TakeRoundingOff(mz)) return Judge(scan);
  Scan evened = scan;
  evened.mz = std::move(mz);
  return Judge(evened);
}

}  // namespace TslTool
