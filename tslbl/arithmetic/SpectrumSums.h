#pragma once
// Sums and averages of spectra.

#include <tslbl/Export.h>
#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/spectrum/StateSpectrum.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// Adds the amplitudes of `other` point by point, exactly; nothing else changes. Both must be of one
// acquisition state: throws std::runtime_error "Different startMDAC", "Different stepMDAC", "Different
// numPoints" or "Y axis not assigned", and `sum` is as it was.
TSLBL_API void AddSingleStateSpectra(Spectrum* sum, const Spectrum* other);

// Divides the amplitudes. By 1 nothing is done or checked. Throws std::runtime_error "Y axis not assigned"
// and "Divide by zero", and the spectrum is as it was.
TSLBL_API void DivideSpectrum(Spectrum* spectrum, std::uint32_t divisor);

// The average a spectrum of sums of several acquisition states; a StateSpectrum's state is the number of
// spectra in its sum. Of one sum a copy of its class, divided. Several are brought to one axis: that of the
// finest steps, and of equal ones of the widest calibration, from the lowest to the highest m/z of all. There
// each is read on straight lines between its points; a point's average is that of the sums that reach it, 0
// where none does. Null for an empty list. The caller owns the result; no pointer may be null. Throws what
// DivideSpectrum does, and std::runtime_error "Divide by zero error" for a calibration with two points at one
// m/z or steps of 0, "Too many points" for steps that would make more than 2^31. Linear in the points of all.
TSLBL_API Spectrum* AverageMultiStateSpectra(const std::vector<StateSpectrum>& spectra);

}  // namespace TslBL
