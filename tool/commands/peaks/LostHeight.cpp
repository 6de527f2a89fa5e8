#include <tool/commands/peaks/LostHeight.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/SmallestStep.h>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

constexpr double kLeastPart = 0.2;
constexpr double kLeastGain = 0.05;
constexpr double kCertain = 8.0;        // standard deviations
constexpr std::size_t kSample = 4096;   // points, enough for a median
constexpr double kDeviations = 1.4826;  // a standard deviation of normal noise in medians of its size

// Of what the smoothing took from the points.
double Scatter(const LoadedSpectrum& loaded) {
  const std::vector<double>& smoothed = loaded.spectrum->yAxis;
  const std::size_t stride = std::max<std::size_t>(1, smoothed.size() / kSample);
  std::vector<double> sizes;
  for (std::size_t i = 0; i < smoothed.size(); i += stride)
    sizes.push_back(std::abs(loaded.MeasuredAt(i) - smoothed[i]));
  return kDeviations * TslMath::Median(std::move(sizes));
}

// The sums of three points about the top.
struct Top {
  double measured = 0.0;
  double lost = 0.0;
  double height = 0.0;
};

Top TopOf(const LoadedSpectrum& loaded, const TslBL::PeakInfo& peak) {
  const std::size_t last = loaded.measured.size() - 1;
  const std::size_t middle = std::clamp<std::size_t>(peak.apexIdx, 1, last - 1);
  Top top;
  for (std::size_t i = middle - 1; i <= middle + 1; ++i) {
    top.measured += loaded.measured[i];
    top.lost += loaded.MeasuredAt(i) - loaded.spectrum->yAxis[i];
    top.height += loaded.MeasuredAt(i) - peak.baselineAmpl;
  }
  return top;
}

}  // namespace

std::optional<LostHeight> MostLostHeight(const LoadedSpectrum& loaded) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  if (!spectrum.CheckAllStatus(TslBL::Curve::STATUS_SMOOTHED) || spectrum.peaks.empty() ||
      loaded.measured.size() < 3)
    return std::nullopt;
  const double scatter = Scatter(loaded);
  const double ion = loaded.countAmpl > 0.0
                         ? loaded.countAmpl
                         : TslMath::SmallestStep(loaded.measured.data(), loaded.measured.size());
  std::optional<LostHeight> most;
  for (const TslBL::PeakInfo& peak : spectrum.peaks) {
    const Top top = TopOf(loaded, peak);
    const double least = kCertain * std::sqrt(3.0 * scatter * scatter + ion * std::max(top.measured, 0.0));
    const LostHeight lost{spectrum.xAxis[peak.apexIdx], top.height / 3.0, (top.height - top.lost) / 3.0};
    const double part = lost.Part();
    const bool isMuch = part >= kLeastPart || part <= -kLeastGain;
    if (isMuch && std::abs(top.lost) > least && (!most || std::abs(part) > std::abs(most->Part())))
      most = lost;
  }
  return most;
}

}  // namespace TslTool
