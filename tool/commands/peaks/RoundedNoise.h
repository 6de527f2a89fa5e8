#pragma once
// The noise of amplitudes that were rounded so coarsely that most of a background is level.

#include <tool/io/SpectrumSource.h>
#include <span>
#include <vector>

namespace TslTool {

// The step of the amplitudes if three in five neighbours or more share a value that is not the lowest one, as
// where it is more than some three standard deviations of the noise; else 0.
double CoarseStepOf(const std::vector<double>& measured);

// Raises the noise of each point to what a single such step leaves behind the weights of the smoothing: what
// noise there is comes in whole steps, seldom, and its spread tells as little of the next one as that of
// single ions. Nothing changes without a smoothing, where noise is half a step at least, or where it is that
// of a range.
void RaiseToRounding(LoadedSpectrum& loaded, std::span<const double> filter);

}  // namespace TslTool
