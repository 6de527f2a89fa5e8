#include <tool/commands/peaks/TopShape.h>

#include <tslbl/curve/FilterWeights.h>
#include <tslbl/curve/SmoothParams.h>
#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <vector>

namespace TslTool {
namespace {

using TslBL::PeakInfo;
using TslBL::Spectrum;

constexpr std::size_t kLeastPeaks = 5;
constexpr std::size_t kMostPeaks = 500;
// Of the share that one peak tells, with the noise of its top.
constexpr double kSureEach = 2.0;
constexpr double kSure = 4.0;      // standard errors of the median of all
constexpr double kMatters = 0.15;  // less is within what heights are off anyhow
constexpr double kErrorOfMedian = 1.2533 * 1.4826;

// A parabola through half as many points as the filter has.
SmoothFilter Reference(const SmoothFilter& filter) {
  TslBL::SmoothParams smooth;
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, static_cast<std::uint32_t>(std::max<std::size_t>(filter.weights.size() / 2 | 1, 3))}};
  return SmoothFilter(TslBL::QFilterWeights(smooth));
}

double Through(std::span<const double> weights, const std::vector<double>& y, std::size_t at) {
  const std::size_t half = weights.size() / 2;
  double sum = 0.0;
  for (std::size_t k = 0; k < weights.size(); ++k) sum += weights[k] * y[at + k - half];
  return sum;
}

class Shares {
 public:
  Shares(const LoadedSpectrum& loaded, const SmoothFilter& filter)
      : loaded_(loaded), filter_(filter), reference_(Reference(filter)) {}

  std::vector<double> All() const {
    std::vector<double> shares;
    for (const PeakInfo& peak : loaded_.spectrum->peaks) {
      if (shares.size() == kMostPeaks) break;
      if (const auto share = Of(peak)) shares.push_back(*share);
    }
    return shares;
  }

 private:
  std::optional<double> Of(const PeakInfo& peak) const {
    const Spectrum& spectrum = *loaded_.spectrum;
    const std::size_t at = peak.apexIdx;
    const std::size_t half = reference_.weights.size() / 2;
    if (at < half || at + half >= loaded_.measured.size()) return std::nullopt;
    const double width = peak.halfHeightRightIdx - peak.halfHeightLeftIdx;
    const double expected = reference_.gain.Of(width) / filter_.gain.Of(width) - 1.0;
    const double height = spectrum.yAxis[at] - peak.baselineAmpl;
    const double noise = std::max(spectrum.noise[at], std::sqrt(std::max(height, 0.0) * loaded_.countAmpl));
    if (!(height * expected > kSureEach * noise)) return std::nullopt;
    const double before = Through(reference_.weights, loaded_.measured, at) - peak.baselineAmpl;
    return (before / height - 1.0) / expected;
  }

  const LoadedSpectrum& loaded_;
  const SmoothFilter& filter_;
  SmoothFilter reference_;
};

double MedianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

double DeviationFrom(double median, std::vector<double> values) {
  for (double& value : values) value = std::abs(value - median);
  return MedianOf(std::move(values));
}

}  // namespace

TopShape::TopShape(const LoadedSpectrum& loaded, const SmoothFilter& filter) {
  const Spectrum& spectrum = *loaded.spectrum;
  if (filter.weights.size() < 3 || loaded.measured.size() != spectrum.yAxis.size() ||
      spectrum.noise.size() != spectrum.yAxis.size() || !OnlySmooths(spectrum))
    return;
  const std::vector<double> shares = Shares(loaded, filter).All();
  if (shares.size() < kLeastPeaks) return;
  const double median = MedianOf(shares);
  const double error =
      kErrorOfMedian * DeviationFrom(median, shares) / std::sqrt(static_cast<double>(shares.size()));
  if (std::abs(median - 1.0) > std::max(kMatters, kSure * error)) share_ = std::clamp(median, -3.0, 3.0);
}

}  // namespace TslTool
