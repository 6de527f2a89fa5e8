#include <tool/commands/peaks/FlankPeaks.h>

#include <tool/commands/peaks/SmoothFilter.h>
#include <algorithm>
#include <cmath>
#include <vector>

namespace TslTool {
namespace {

constexpr std::size_t kLeastPoints = 5;

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

double RiseOf(const TslBL::PeakInfo& peak, const std::vector<double>& y) {
  return peak.apexAmpl - std::max(y[peak.startIdx], y[peak.endIdx]);
}

}  // namespace

std::size_t LeaveOutFlankPeaks(LoadedSpectrum& loaded, double least) {
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  const auto filter = FilterOf(spectrum);
  if (!filter || filter->weights.size() < kLeastPoints || loaded.measured.size() != spectrum.yAxis.size())
    return 0;
  double squares = 0.0;
  for (const double weight : filter->weights) squares += weight * weight;
  const double part = least * std::sqrt(squares);
  return std::erase_if(spectrum.peaks, [&](const TslBL::PeakInfo& peak) {
    return RiseOf(peak, spectrum.yAxis) < part * ScatterAbout(loaded, peak.apexIdx, filter->weights.size());
  });
}

}  // namespace TslTool
