#include <tool/io/FillGaps.h>

#include <tool/io/Gaps.h>
#include <algorithm>
#include <numeric>
#include <utility>

namespace TslTool {
namespace {

constexpr std::size_t kZeros = 16;
constexpr std::size_t kManyGaps = 20;
constexpr double kDown = 0.5;
constexpr std::size_t kWindow = 8;  // points
constexpr std::ptrdiff_t kEdge = 3;
constexpr double kStillFalls = 0.6;
constexpr std::size_t kTellingEnds = 4;
constexpr std::size_t kTellingStretches = 3;
constexpr std::size_t kMostOf = 5;
constexpr std::size_t kSomeOf = 10;
constexpr std::size_t kListedOf = 100;

std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

// Whether the last points towards the end `at` lie lower than those before them.
bool StillFalls(std::size_t at, std::size_t begin, std::size_t end, const std::vector<double>& amplitude) {
  const auto outer = amplitude.begin() + Offset(at == begin ? begin : end) - (at == begin ? 0 : kEdge);
  const auto inner = at == begin ? outer + kEdge : outer - kEdge;
  return std::accumulate(outer, outer + kEdge, 0.0) <=
         kStillFalls * std::accumulate(inner, inner + kEdge, 0.0);
}

// Whether the amplitude of the points begin .. end-1 falls towards the end `at`. A peak that was cut out
// still falls there, the background in the window of a selected ion does not.
bool FallsTo(std::size_t at, std::size_t begin, std::size_t end, const std::vector<double>& amplitude) {
  if (end - begin < 3) return true;
  const auto first = amplitude.begin() + Offset(begin);
  const auto last = amplitude.begin() + Offset(end);
  if (amplitude[at] > kDown * *std::max_element(first, last)) return false;
  if (end - begin < kWindow || amplitude[at] == 0.0) return true;
  return StillFalls(at, begin, end, amplitude);
}

// Points between two gaps.
struct Stretch {
  std::size_t begin;
  std::size_t end;
};

std::vector<Stretch> StretchesOf(const std::vector<Gap>& gaps, std::size_t points) {
  std::vector<Stretch> stretches;
  std::size_t begin = 0;
  for (const Gap& gap : gaps) {
    stretches.push_back({begin, gap.at});
    begin = gap.at;
  }
  stretches.push_back({begin, points});
  return stretches;
}

// The ends of long stretches.
std::vector<double> EndsOf(const std::vector<Stretch>& stretches, const std::vector<double>& amplitude) {
  std::vector<double> ends;
  for (const auto& [begin, end] : stretches)
    if (end - begin >= kWindow) ends.insert(ends.end(), {amplitude[begin], amplitude[end - 1]});
  return ends;
}

std::size_t FallingEnds(const std::vector<Stretch>& stretches, const std::vector<double>& amplitude) {
  std::size_t falling = 0;
  for (const auto& [begin, end] : stretches) {
    if (end - begin < kWindow) continue;
    for (const std::size_t at : {begin, end - 1}) falling += StillFalls(at, begin, end, amplitude) ? 1 : 0;
  }
  return falling;
}

// Windows of selected ions hold the same number of points, but for the rounding of their edges; what lies
// between zeros does not.
bool AreAlike(const std::vector<Stretch>& stretches) {
  if (stretches.size() < kTellingStretches) return false;
  std::vector<std::size_t> points;
  points.reserve(stretches.size());
  for (const auto& [begin, end] : stretches) points.push_back(end - begin);
  std::vector<std::size_t> sorted = points;
  const auto middle = sorted.begin() + Offset(sorted.size() / 2);
  std::nth_element(sorted.begin(), middle, sorted.end());
  const std::size_t usual = *middle;
  const auto others =
      std::ranges::count_if(points, [usual](std::size_t n) { return n + 1 < usual || n > usual + 1; });
  return usual >= kWindow && kMostOf * static_cast<std::size_t>(others) <= stretches.size();
}

// Whether the ends lie above 0 although 0 is measured elsewhere, or although the stretches are alike.
bool EndAboveZero(const std::vector<Stretch>& stretches, const std::vector<double>& amplitude) {
  const std::vector<double> ends = EndsOf(stretches, amplitude);
  if (ends.size() < std::max(stretches.size(), kTellingEnds)) return false;
  const auto isNone = [](double value) { return value <= 0.0; };
  const std::size_t above = ends.size() - static_cast<std::size_t>(std::ranges::count_if(ends, isNone));
  const auto listed = static_cast<std::size_t>(std::ranges::count_if(amplitude, isNone));
  if (2 * above >= ends.size() && kListedOf * listed >= amplitude.size()) return true;
  const std::size_t level = ends.size() - FallingEnds(stretches, amplitude);
  return kSomeOf * std::min(above, level) >= ends.size() && AreAlike(stretches);
}

// Whether most of the stretches are long ones at whose ends the curve neither falls any more nor has come
// down to the same least amplitude.
bool EndOverABackground(const std::vector<Stretch>& stretches, const std::vector<double>& amplitude) {
  const std::vector<double> ends = EndsOf(stretches, amplitude);
  if (ends.size() < std::max(stretches.size(), kTellingEnds)) return false;
  const auto least = static_cast<std::size_t>(std::ranges::count(ends, *std::ranges::min_element(ends)));
  return 2 * FallingEnds(stretches, amplitude) < ends.size() && 2 * least < ends.size();
}

// Whether the stretches are windows over a background, which goes on beyond their ends.
bool AreWindows(const std::vector<Stretch>& stretches, const std::vector<double>& amplitude) {
  return EndAboveZero(stretches, amplitude) || EndOverABackground(stretches, amplitude);
}

// Leaves the gaps that the ends of peaks make.
void KeepEndsOfPeaks(const std::vector<double>& amplitude, std::vector<Gap>& gaps) {
  if (gaps.size() >= kManyGaps) return;
  std::vector<Gap> kept;
  for (std::size_t k = 0; k < gaps.size(); ++k) {
    const std::size_t begin = k == 0 ? 0 : gaps[k - 1].at;
    const std::size_t end = k + 1 < gaps.size() ? gaps[k + 1].at : amplitude.size();
    const std::size_t gap = gaps[k].at;
    if (FallsTo(gap - 1, begin, gap, amplitude) && FallsTo(gap, gap, end, amplitude)) kept.push_back(gaps[k]);
  }
  gaps = std::move(kept);
}

// Zeros from the two sides of a gap to its middle; none if the step is lost in the rounding of m/z.
void AddZeros(double from, double to, double step, std::vector<double>& mz) {
  if (!(from + 0.5 * step > from && to + 0.5 * step > to)) return;
  const double middle = 0.5 * (from + to);
  for (std::size_t k = 1; k <= kZeros && from + static_cast<double>(k) * step < middle; ++k)
    mz.push_back(from + static_cast<double>(k) * step);
  for (std::size_t k = kZeros; k > 0; --k)
    if (to - static_cast<double>(k) * step >= middle) mz.push_back(to - static_cast<double>(k) * step);
}

}  // namespace

std::size_t FillGaps(std::vector<double>& mz, std::vector<double>& amplitude) {
  if (mz.size() < 3) return 0;
  std::vector<Gap> gaps = GapsOf(mz);
  if (AreWindows(StretchesOf(gaps, mz.size()), amplitude)) return 0;
  KeepEndsOfPeaks(amplitude, gaps);
  if (gaps.empty()) return 0;
  std::vector<double> x;
  std::vector<double> y;
  std::size_t begin = 0;
  for (const auto& [gap, step] : gaps) {
    x.insert(x.end(), mz.begin() + Offset(begin), mz.begin() + Offset(gap));
    y.insert(y.end(), amplitude.begin() + Offset(begin), amplitude.begin() + Offset(gap));
    AddZeros(mz[gap - 1], mz[gap], step, x);
    y.resize(x.size(), 0.0);
    begin = gap;
  }
  x.insert(x.end(), mz.begin() + Offset(begin), mz.end());
  y.insert(y.end(), amplitude.begin() + Offset(begin), amplitude.end());
  mz = std::move(x);
  amplitude = std::move(y);
  return gaps.size();
}

}  // namespace TslTool
