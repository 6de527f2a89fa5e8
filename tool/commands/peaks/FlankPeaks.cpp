#include <tool/commands/peaks/FlankPeaks.h>

#include <tool/chain/SmoothFilter.h>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

constexpr std::size_t kLeastPoints = 5;
constexpr std::size_t kAroundEnd = 2;
constexpr double kChance = 1.0;  // standard deviations
constexpr double kFoot = 2.0;    // widths of a peak to either side of it, where its foot is
constexpr double kFootHeight = 0.5;
constexpr double kWide = 1.5;  // windows of the filter; what stands beside a narrower peak is no noise

// Of single points, from so many before the peak's top to so many behind it.
double ScatterOf(const LoadedSpectrum& loaded, std::uint32_t top, std::size_t before, std::size_t behind) {
  const std::size_t begin = top - std::min<std::size_t>(top, before);
  const std::size_t end = std::min<std::size_t>(top + behind + 1, loaded.measured.size());
  double squares = 0.0;
  for (std::size_t i = begin; i < end; ++i) {
    const double residual = loaded.MeasuredAt(i) - loaded.spectrum->yAxis[i];
    squares += residual * residual;
  }
  return std::sqrt(squares / static_cast<double>(end - begin));
}

// On the side of a taller neighbour there are its ions, too.
double ScatterAbout(const LoadedSpectrum& loaded, std::uint32_t top, std::size_t filter) {
  return std::min(ScatterOf(loaded, top, filter, filter / 2), ScatterOf(loaded, top, filter / 2, filter));
}

// Beside a strong line a filter swings below the curve, and may be cut at 0: where what was measured lies
// above it by more than chance it tells the level.
double LevelAt(const LoadedSpectrum& loaded, std::size_t end, double scatter) {
  const std::vector<double>& smoothed = loaded.spectrum->yAxis;
  const std::size_t from = end - std::min(end, kAroundEnd);
  const std::size_t to = std::min(end + kAroundEnd + 1, loaded.measured.size());
  double above = 0.0;
  for (std::size_t i = from; i < to; ++i) above += loaded.MeasuredAt(i) - smoothed[i];
  const auto points = static_cast<double>(to - from);
  const bool isSwing = smoothed[end] == 0.0 || above > kChance * scatter * std::sqrt(points);
  return smoothed[end] + (isSwing ? above / points : 0.0);
}

double RiseOf(const LoadedSpectrum& loaded, const TslBL::PeakInfo& peak, double scatter) {
  return peak.apexAmpl -
         std::max(LevelAt(loaded, peak.startIdx, scatter), LevelAt(loaded, peak.endIdx, scatter));
}

using Peaks = std::vector<TslBL::PeakInfo>;
using Marks = std::vector<bool>;

bool AreTouching(const TslBL::PeakInfo& left, const TslBL::PeakInfo& right) {
  return left.endIdx >= right.startIdx;
}

bool IsOnFootOf(const TslBL::PeakInfo& peak, const TslBL::PeakInfo& bump) {
  const double width = peak.halfHeightRightIdx - peak.halfHeightLeftIdx;
  return std::abs(peak.maxIdx - bump.apexIdx) <= kFoot * width &&
         bump.apexAmpl - bump.baselineAmpl <= kFootHeight * (peak.apexAmpl - peak.baselineAmpl);
}

// Gives a peak the stretches of the marked ones that touch it on one side, as long as the curve falls.
// `next` goes to that side, `end` is the limit there.
void TakeFoot(const std::vector<double>& y, Peaks& peaks, const Marks& isBump, std::size_t index,
              std::ptrdiff_t next, std::uint32_t TslBL::PeakInfo::*end) {
  TslBL::PeakInfo& peak = peaks[index];
  for (auto i = static_cast<std::ptrdiff_t>(index) + next; 0 <= i && i < std::ssize(peaks); i += next) {
    const auto at = static_cast<std::size_t>(i);
    const TslBL::PeakInfo& bump = peaks[at];
    const bool touches = next > 0 ? AreTouching(peak, bump) : AreTouching(bump, peak);
    if (!isBump[at] || !touches || !IsOnFootOf(peak, bump) || y[bump.*end] > y[peak.*end]) return;
    peak.*end = bump.*end;
  }
}

// Noise that divides the foot of a wide peak divides its area no less.
void GiveFeetBack(const std::vector<double>& y, Peaks& peaks, const Marks& isBump, std::size_t filter) {
  for (std::size_t i = 0; i < peaks.size(); ++i) {
    const double width = peaks[i].halfHeightRightIdx - peaks[i].halfHeightLeftIdx;
    if (isBump[i] || width < kWide * static_cast<double>(filter)) continue;
    TakeFoot(y, peaks, isBump, i, -1, &TslBL::PeakInfo::startIdx);
    TakeFoot(y, peaks, isBump, i, 1, &TslBL::PeakInfo::endIdx);
  }
}

std::size_t LeaveOut(Peaks& peaks, const Marks& isBump) {
  Peaks kept;
  kept.reserve(peaks.size());
  for (std::size_t i = 0; i < peaks.size(); ++i)
    if (!isBump[i]) kept.push_back(peaks[i]);
  const std::size_t leftOut = peaks.size() - kept.size();
  peaks = std::move(kept);
  return leftOut;
}

}  // namespace

std::size_t LeaveOutFlankPeaks(LoadedSpectrum& loaded, double least) {
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  const auto filter = FilterOf(spectrum);
  if (least == 0.0 || !filter || filter->weights.size() < kLeastPoints ||
      loaded.measured.size() != spectrum.yAxis.size())
    return 0;
  double squares = 0.0;
  for (const double weight : filter->weights) squares += weight * weight;
  const double part = least * std::sqrt(squares);
  Marks isBump;
  isBump.reserve(spectrum.peaks.size());
  for (const TslBL::PeakInfo& peak : spectrum.peaks) {
    const double scatter = ScatterAbout(loaded, peak.apexIdx, filter->weights.size());
    isBump.push_back(RiseOf(loaded, peak, scatter) < part * scatter);
  }
  if (std::ranges::none_of(isBump, std::identity())) return 0;
  GiveFeetBack(spectrum.yAxis, spectrum.peaks, isBump, filter->weights.size());
  return LeaveOut(spectrum.peaks, isBump);
}

}  // namespace TslTool
