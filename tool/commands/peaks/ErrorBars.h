#pragma once
// How well the data determine the peaks of one spectrum.

#include <tool/chain/SmoothFilter.h>
#include <tool/commands/peaks/CountVariance.h>
#include <tool/commands/peaks/TopShape.h>
#include <tool/io/SpectrumSource.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/PeakErrors.h>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TslTool {

struct ErrorBar {
  double height;  // above the baseline, with what the smoothing took; NaN where that is not known
  double mz;      // standard errors; NaN where they are not known
  double amplitude;
  double area;
  bool isCounted = false;  // whether the standard errors come from counts
  double narrowing = 1.0;  // the width before the smoothing over that behind it; 1 where it is not known
};

// Where counts are known, as in a run or in a profile of whole numbers whose noise is that of counting, a
// point's variance is its count, averaged over a third of the filter. Else it is that of the noise curve, and
// what grows with the signal, as far as that shows (SignalNoise.h). Nothing is known without the measured
// amplitudes, without a noise curve or where nothing scatters, and behind a median or two smoothings.
class ErrorBars {
 public:
  // `loaded`, whose chain has run, must outlive it.
  explicit ErrorBars(const LoadedSpectrum& loaded);

  ErrorBar Of(std::uint32_t peakIdx);

 private:
  const TslBL::Spectrum& spectrum_;
  std::shared_ptr<const SmoothFilter> filter_;
  std::optional<TopShape> tops_;
  PointVariance variance_;
  std::unique_ptr<TslBL::Curve> lifted_;  // as the places of its peaks were found
  std::optional<TslBL::PeakErrorEstimator> estimator_;
};

}  // namespace TslTool
