#include <tool/commands/peaks/Spikes.h>

#include <tool/chain/SmoothFilter.h>
#include <tslbl/closed/math/SmallestStep.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <span>
#include <vector>

namespace TslTool {
namespace {

constexpr double kPart = 0.8;
constexpr double kCertain = 5.0;  // standard deviations
constexpr std::size_t kLeastPoints = 5;
constexpr std::size_t kAroundApex = 2;
constexpr std::size_t kSpikes = 3;
constexpr double kWide = 4.0;  // points

class SpikeMeasure {
 public:
  SpikeMeasure(const LoadedSpectrum& loaded, std::span<const double> filter)
      : y_(loaded.measured), ion_(loaded.countAmpl) {
    gain_ = std::inner_product(filter.begin(), filter.end(), filter.begin(), 0.0);
  }

  bool IsSpike(const TslBL::PeakInfo& peak) {
    const std::size_t top = TopOf(peak.apexIdx);
    if (top == 0 || top + 1 >= y_.size()) return false;
    const double height = y_[top] - peak.baselineAmpl;
    const double beside = std::max(y_[top - 1], y_[top + 1]);
    if (!(y_[top] - beside > kPart * height)) return false;
    LookAtAll();
    const double variance = peak.noiseAmpl * peak.noiseAmpl / gain_ + ion_ * std::max(y_[top], 0.0);
    return y_[top] - (beside == 0.0 ? lowest_ : beside) > kPart * height &&
           height > kCertain * std::sqrt(variance);
  }

 private:
  std::size_t TopOf(std::size_t apex) const {
    const std::size_t begin = apex - std::min(apex, kAroundApex);
    const std::size_t end = std::min(apex + kAroundApex + 1, y_.size());
    const auto first = y_.begin();
    return static_cast<std::size_t>(std::max_element(first + static_cast<std::ptrdiff_t>(begin),
                                                     first + static_cast<std::ptrdiff_t>(end)) -
                                    first);
  }

  // Seldom needed, and longer than all else.
  void LookAtAll() {
    if (lowest_ > 0.0) return;
    if (ion_ == 0.0) ion_ = TslMath::SmallestStep(y_.data(), y_.size());
    lowest_ = std::numeric_limits<double>::infinity();
    for (const double amplitude : y_)
      if (amplitude > 0.0) lowest_ = std::min(lowest_, amplitude);
  }

  const std::vector<double>& y_;
  double gain_ = 1.0;
  double ion_;
  double lowest_ = 0.0;  // above 0, once it is known
};

double WidthOf(const TslBL::PeakInfo& peak) { return peak.halfHeightRightIdx - peak.halfHeightLeftIdx; }

}  // namespace

std::size_t LeaveOutSpikes(LoadedSpectrum& loaded) {
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  const auto filter = FilterOf(spectrum);
  if (!filter || filter->weights.size() < kLeastPoints || spectrum.peaks.empty() ||
      loaded.measured.size() != spectrum.yAxis.size())
    return 0;
  SpikeMeasure measure(loaded, filter->weights);
  return std::erase_if(spectrum.peaks, [&](const TslBL::PeakInfo& peak) { return measure.IsSpike(peak); });
}

std::optional<double> SpikeAmongPeaks(const LoadedSpectrum& loaded) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  const auto filter = FilterOf(spectrum);
  if (!filter || spectrum.peaks.size() <= kSpikes || loaded.measured.size() != spectrum.yAxis.size())
    return std::nullopt;
  SpikeMeasure measure(loaded, filter->weights);
  const TslBL::PeakInfo* highest = nullptr;
  std::size_t spikes = 0;
  bool hasWide = false;
  for (const TslBL::PeakInfo& peak : spectrum.peaks) {
    hasWide |= WidthOf(peak) >= kWide;
    if (!measure.IsSpike(peak)) continue;
    ++spikes;
    if (!highest || peak.apexAmpl > highest->apexAmpl) highest = &peak;
  }
  return spikes >= kSpikes && hasWide ? std::optional(spectrum.xAxis[highest->apexIdx]) : std::nullopt;
}

}  // namespace TslTool
