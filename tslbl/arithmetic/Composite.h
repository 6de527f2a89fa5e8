#pragma once
// Spectra of different acquisition states on one axis.
//
// For the sources of the library; not part of its interface.

#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/spectrum/StateSpectrum.h>
#include <memory>
#include <vector>

namespace TslBL {

// The average a spectrum: at each point of the common grid the sum of the sources that have a value there,
// over the number of spectra in these; 0 where there is none. Two sources or more, none of them null. Throws
// std::runtime_error "Divide by zero" for a sum of no spectrum, "Divide by zero error" for a calibration with
// two points at one m/z and for a grid without a step, and "Too many points" for one of more than 2^31
// points.
std::unique_ptr<Spectrum> CompositeAverage(const std::vector<StateSpectrum>& sources);

// a without b; 0 where that would be below. Throws likewise.
std::unique_ptr<Spectrum> CompositeDifference(const Spectrum& a, const Spectrum& b);

}  // namespace TslBL
