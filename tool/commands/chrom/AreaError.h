#pragma once
// Areas of the peaks of a chromatogram, and how well the data determine them.

#include <tool/commands/chrom/Chromatogram.h>
#include <tool/commands/peaks/SmoothFilter.h>
#include <tslbl/chromatogram/ICObj.h>
#include <tslbl/curve/PeakErrors.h>
#include <optional>
#include <utility>
#include <vector>

namespace TslTool {

// The area is that of the measured points, so that smoothing carries none of it beyond the ends of a peak.
// Its variance is that of the counts, where they are known, or else that of the noise curve, without the part
// that grows with a peak; and that of the baseline, which a peak's neighbourhood determines.
class AreaErrors {
 public:
  // `curve` is `measured`, evaluated; `filter` is that of its smoothing, null if it has none. All must
  // outlive it.
  AreaErrors(const Chromatogram& measured, const TslBL::ICObj& curve, const SmoothFilter* filter);

  // The area of a row of the peak table and its standard error, NaN where that is not known.
  std::pair<double, double> Of(std::uint32_t peakIdx);

 private:
  double BaselineVariance(std::uint32_t peakIdx) const;

  TslBL::ICObj raw_;
  std::vector<double> variance_;
  std::optional<TslBL::PeakErrorEstimator> errors_;
};

}  // namespace TslTool
