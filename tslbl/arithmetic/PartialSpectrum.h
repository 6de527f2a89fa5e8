#pragma once
// A part of a spectrum.

#include <tslbl/Export.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>

namespace TslBL {

// Keeps the points from lowMZ to highMZ, both ends included, with startMDAC and tic to match. Baseline, noise
// and peaks stay as they are, and no longer fit. False, with nothing changed, if no point is there. Throws
// std::runtime_error "Divide by zero error" for a tune's calibration with two points at one m/z, with nothing
// changed.
TSLBL_API bool MakePartialSpectrum(Spectrum& spectrum, double lowMZ, double highMZ);

// A spectrum of the points first to last, both included, with the arrays that the status tells of,
// parameters, calibrations and time stamp. Its peak tables are those of the whole spectrum: their indexes do
// not fit before an evaluation. stepMDAC, id, name, history and annotations are those of a new spectrum.
// Throws std::out_of_range unless first <= last < number of points, and std::runtime_error likewise. Takes
// time linear in the points and rows that are copied.
//
// Of a spectrum that is not const two ints are taken for m/z, and the spectrum is cut: std::as_const tells
// the compiler which is meant.
TSLBL_API Spectrum MakePartialSpectrum(const Spectrum& spectrum, std::uint32_t first, std::uint32_t last);

}  // namespace TslBL
