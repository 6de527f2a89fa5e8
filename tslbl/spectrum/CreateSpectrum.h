#pragma once
// From a raw spectrum to a spectrum: m/z for the steps of the mass DAC.
//
// A spectrum has both axes and no evaluation. The amplitudes are taken as they are: a caller
// who wants count rates converts the counts first (CountRate.h).
//
// All of these throw std::runtime_error "Divide by zero error" for a calibration with two
// points at one m/z, where the axis falls between them. An empty calibration gives an axis
// of zeros. Linear in the number of points.

#include <tslbl/Export.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/spectrum/Spectrum.h>
#include <vector>

namespace TslBL {

struct Tune;

// The DAC scale is the tune's. The axis is that of `calPts`, or of the tune's own
// calibration if that is null. It begins at the tune's low m/z exactly, while the stored
// startMDAC is whole: MZAssign moves it by the fraction of a DAC step. The caller owns the
// result.
TSLBL_API Spectrum* CreateSpectrum(const Tune& tune, const RawSpectrum& raw,
                                   const std::vector<MZCalPt>* calPts);

// With a finished axis, whose length is not compared with that of the counts. `startMZ` is
// the m/z of the first point on the tune's calibration, `mzStep` the distance of two points
// in m/z. The caller owns the result.
TSLBL_API Spectrum* CreateSpectrum(const RawSpectrum& raw, const std::vector<MZCalPt>& tunePts,
                                   const std::vector<MZCalPt>& appliedPts, double startMZ, double mzStep,
                                   const std::vector<double>& mzAxis);

// Makes the x axis anew from startMDAC, stepMDAC and appliedMZCalPts, for as many points as
// there are amplitudes. Nothing else changes: the caller runs again whatever depends on m/z.
// If it throws the spectrum is as it was.
TSLBL_API void MZAssign(Spectrum& spectrum);

}  // namespace TslBL
