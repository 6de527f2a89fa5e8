#include <tool/commands/peaks/FlankPeaks.h>

#include <tool/chain/SmoothFilter.h>
#include <algorithm>
#include <cmath>
#include <vector>

namespace TslTool {
namespace {

constexpr std::size_t kLeastPoints = 5;
constexpr std::size_t kAroundEnd = 2;
constexpr double kChance = 1.0;  // standard deviations

// Of single points, from so many before the peak's top to so many behind it.
double ScatterOf(const LoadedSpectrum& loaded, std::uint32_t top, std::size_t before, std::size_t behind) {
  const std::size_t begin = top - std::min<std::size_t>(top, before);
  const std::size_t end = std::min<std::size_t>(top + behind + 1, loaded.measured.size());
  double squares = 0.0;
  for (std::size_t i = begin; i < end; ++i) {
    const double residual = loaded.measured[i] - loaded.spectrum->yAxis[i];
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
  for (std::size_t i = from; i < to; ++i) above += loaded.measured[i] - smoothed[i];
  const auto points = static_cast<double>(to - from);
  const bool isSwing = smoothed[end] == 0.0 || above > kChance * scatter * std::sqrt(points);
  return smoothed[end] + (isSwing ? above / points : 0.0);
}

double RiseOf(const LoadedSpectrum& loaded, const TslBL::PeakInfo& peak, double scatter) {
  return peak.apexAmpl -
         std::max(LevelAt(loaded, peak.startIdx, scatter), LevelAt(loaded, peak.endIdx, scatter));
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
  return std::erase_if(spectrum.peaks, [&](const TslBL::PeakInfo& peak) {
    const double scatter = ScatterAbout(loaded, peak.apexIdx, filter->weights.size());
    return RiseOf(loaded, peak, scatter) < part * scatter;
  });
}

}  // namespace TslTool
