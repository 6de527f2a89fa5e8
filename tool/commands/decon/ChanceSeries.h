#pragma once
// Resolved series that chance alone makes of a list of peaks.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <cstddef>
#include <functional>

namespace TslTool {

// Takes out the resolved series that are no better, by peaks and by intensity, than one which the same search
// finds where there can be none: among the same peaks with m/z stretched, so that isotopes are nowhere as far
// apart as nature has them. Pickers that take the tops of noise for peaks write thousands of them, and among
// these some stand at any distance. What the stretched search makes of the peaks of one molecule, which it
// takes for a charge that is near, does not count.
//
// `search` fills the series of a spectrum. Returns how many were taken out. Source: J. E. Elias, S. P. Gygi,
// "Target-decoy search strategy for increased confidence in large-scale protein identifications by mass
// spectrometry", Nature Methods 4 (2007). Throws what `search` throws.
std::size_t DropChanceSeries(TslBL::DeconSpectrum& spectrum,
                             const std::function<void(TslBL::DeconSpectrum&)>& search);

}  // namespace TslTool
