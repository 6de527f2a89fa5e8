#pragma once
// Fitted peaks that stand for the skew of a protein's line.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <tslbl/spectrum/OverlappedCurve.h>

namespace TslTool {

// Isotopes that run into each other make a skew line, which Gaussians follow best with a weak companion on
// its slower side: the line then seems to lie too low, and to be less than it is. Puts such a companion to
// the line of an unresolved series of `found`: what stands closer than 0.55 widths, of the fits or of the
// isotopes of that mass, or closer than 1.1 with less than 0.35 of the area and a third central moment of up
// to four times that of isotopes. They become one Gaussian of the area, the mean and the variance of both.
// Where nothing else is fitted under the data peak, that stands for itself again. `curve` has the peaks in
// which the series were found. Returns whether there were any.
bool MergeCompanions(const TslBL::DeconSpectrum& found, TslBL::OverlappedCurve& curve);

}  // namespace TslTool
