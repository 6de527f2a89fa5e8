#include <tool/commands/peaks/ErrorBars.h>

#include <tool/chain/Lift.h>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

constexpr double kCertain = 1e-7;
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

}  // namespace

ErrorBars::ErrorBars(const LoadedSpectrum& loaded)
    : spectrum_(*loaded.spectrum), filter_(FilterOf(spectrum_)) {
  if (!filter_) return;
  tops_.emplace(loaded, *filter_);
  variance_ = VarianceOf(loaded, filter_->weights);
  if (variance_.values.empty()) return;
  const TslBL::Curve* curve = &spectrum_;
  if (loaded.lift > 0.0) {
    lifted_.reset(spectrum_.Clone());
    Lower(*lifted_, -loaded.lift);
    curve = lifted_.get();
  }
  estimator_.emplace(*curve, variance_.values, filter_->weights);
}

ErrorBar ErrorBars::Of(std::uint32_t peakIdx) {
  ErrorBar bar{kUnknown, kUnknown, kUnknown, kUnknown};
  const TslBL::PeakInfo& peak = spectrum_.peaks.at(peakIdx);
  if (filter_) {
    const double width = peak.halfHeightRightIdx - peak.halfHeightLeftIdx;
    bar.height = tops_->HeightBefore(peak.ReportedAmpl() - peak.baselineAmpl, width, filter_->gain);
    if (width > 0.0) bar.narrowing = tops_->WidthBefore(width, filter_->gain) / width;
  }
  if (!estimator_) return bar;
  const TslBL::PeakErrors errors = estimator_->Of(peakIdx);
  // Where nothing scatters, as between lines on an empty background, nothing is known.
  if (!(errors.ampl > kCertain * std::abs(peak.ReportedAmpl()))) return bar;
  bar.mz = errors.x;
  bar.amplitude = errors.ampl;
  bar.area = errors.area;
  bar.isCounted = variance_.isOfCounts;
  return bar;
}

}  // namespace TslTool
