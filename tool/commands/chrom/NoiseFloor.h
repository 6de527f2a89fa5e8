#pragma once
// The least noise of a chromatogram that its points do not show.

#include <tool/commands/chrom/Chromatogram.h>
#include <tslbl/curve/Curve.h>

namespace TslTool {

// The standard deviation of a point below which the noise of `values` cannot be: a millionth of what they
// span; what rounding to steps leaves; and where values below a threshold were set to 0, as in centroid
// spectra, the lowest that is not 0, as of what lies below it nothing is known.
double LeastNoise(const std::vector<double>& values);

// Raises the noise of an evaluated curve to that, behind its smoothing.
void RaiseNoise(const Chromatogram& measured, TslBL::Curve& curve);

}  // namespace TslTool
