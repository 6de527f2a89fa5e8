#include <tool/commands/peaks/ErrorBars.h>

#include <tool/commands/peaks/CountVariance.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/FilterWeights.h>
#include <algorithm>
#include <limits>
#include <map>
#include <mutex>

namespace TslTool {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

std::vector<double> FilterOf(const TslBL::Spectrum& spectrum) {
  const auto smooths = std::ranges::count_if(
      spectrum.evals, [](const TslBL::CurveEval& eval) { return eval.Type() == TslBL::EvalType::Smooth; });
  if (smooths == 0) return {1.0};
  return smooths == 1 ? TslBL::QFilterWeights(spectrum.smoothParams) : std::vector<double>();
}

// The spectra of a file share one chain, and the table takes longer than a spectrum.
std::shared_ptr<const TslBL::FilterGain> GainOf(const std::vector<double>& filter) {
  static std::mutex mutex;
  static std::map<std::vector<double>, std::shared_ptr<const TslBL::FilterGain>> known;
  const std::lock_guard lock(mutex);
  auto& gain = known[filter];
  if (!gain) gain = std::make_shared<const TslBL::FilterGain>(filter);
  return gain;
}

}  // namespace

ErrorBars::ErrorBars(const LoadedSpectrum& loaded) : spectrum_(*loaded.spectrum) {
  filter_ = FilterOf(spectrum_);
  if (filter_.empty()) return;
  gain_ = GainOf(filter_);
  variance_ = VarianceOf(loaded, filter_);
  if (!variance_.empty()) estimator_.emplace(spectrum_, variance_, filter_);
}

ErrorBar ErrorBars::Of(std::uint32_t peakIdx) {
  ErrorBar bar{kUnknown, kUnknown, kUnknown, kUnknown};
  const TslBL::PeakInfo& peak = spectrum_.peaks.at(peakIdx);
  if (gain_) {
    const double width = peak.halfHeightRightIdx - peak.halfHeightLeftIdx;
    bar.height = (peak.ReportedAmpl() - peak.baselineAmpl) / gain_->Of(width);
  }
  if (!estimator_) return bar;
  const TslBL::PeakErrors errors = estimator_->Of(peakIdx);
  bar.mz = errors.x;
  bar.amplitude = errors.ampl;
  bar.area = errors.area;
  return bar;
}

}  // namespace TslTool
