#pragma once
// Parameters of charge state deconvolution that follow from the peaks of a spectrum.

#include <tool/commands/decon/DeconOptions.h>
#include <tool/io/SpectrumSource.h>
#include <tslbl/chargestate/ChargeStateParams.h>

namespace TslTool {

// How wide the narrow peaks are, m/z, those that a tenth of the area is in: isotopes that stand apart, of
// which the lumps of higher charges do not tell. Of a list of peaks, which has no widths, how near neighbours
// come to each other. 0 without peaks.
double PeakWidthOf(const LoadedSpectrum& loaded);

// What the user leaves open: the carrier by the polarity, the highest charge by the width of the peaks, as
// isotopes of higher ones run together, with it how far isotopes may be off, and whether overlapping peaks
// are taken apart.
TslBL::ChargeStateParams DerivedParams(const DeconWishes& wishes, const LoadedSpectrum& loaded);

// Whether peaks of a profile are so wide that isotopes of charge 1 run into each other, and can yet be taken
// apart: 0.5 to 2 m/z.
bool MayIsotopesTouch(const LoadedSpectrum& loaded);

// Whether isotopes of several charges stand apart: then molecules whose isotopes are resolved are the surer
// find, and else series of charges.
bool AreIsotopesResolved(const TslBL::ChargeStateParams& params);

}  // namespace TslTool
