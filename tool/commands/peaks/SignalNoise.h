#pragma once
// The noise that grows with the signal, as that of ions does whatever became of them on the way: converted by
// a detector, scaled, averaged, rounded.

#include <tool/io/SpectrumSource.h>

namespace TslTool {

// The variance of a measured point on a peak, without that of the background, divided by its amplitude above
// the baseline. From sixth differences of the points of all peaks, in which the shape of wide peaks leaves
// next to nothing; what that of narrow ones leaves grows faster with the height than noise does. Points that
// were interpolated differ by less: what the noise of the background leaves in such differences tells by how
// much. 0 where no more scatters than the background does, or where it cannot be told. `varianceOfNoise` is
// what the noise curve is, squared, divided by the variance of a measured point; the spectrum's chain has
// run.
double SignalNoiseOf(const LoadedSpectrum& loaded, double varianceOfNoise);

}  // namespace TslTool
