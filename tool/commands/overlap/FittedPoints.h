#pragma once
// The points that peaks are fitted to: those that were measured. A fit to a smoothed curve would take its
// noise, most of which is gone, for all that there is. Where the chain took something off the amplitudes,
// such as the baseline, or the measured ones are not kept, they are those of the evaluated curve.

#include <tool/io/SpectrumSource.h>
#include <vector>

namespace TslTool {

bool AreMeasuredFitted(const LoadedSpectrum& loaded);
const std::vector<double>& FittedPoints(const LoadedSpectrum& loaded);

// While one lives, the spectrum holds the points that are fitted, and its status tells whether they are
// smoothed.
class WithFittedPoints {
 public:
  explicit WithFittedPoints(LoadedSpectrum& loaded);
  WithFittedPoints(const WithFittedPoints&) = delete;
  WithFittedPoints& operator=(const WithFittedPoints&) = delete;
  ~WithFittedPoints();

 private:
  LoadedSpectrum& loaded_;
  bool isSwapped_;
  bool isSmoothed_;
};

}  // namespace TslTool
