#pragma once
// The peaks of a spectrum as the engines of charge state deconvolution are given them.
//
// For the sources of the library; not part of its interface.

#include <tslbl/chargestate/DeconExchange.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <vector>

namespace TslBL {

// The data peaks, and with UseOPD all overlap peaks behind them, in the place of the data peaks of which they
// are parts. The rest of CSParams says which range, what of a peak is its m/z, and what its amplitude.
std::vector<PeakRow> BuildPeakRows(const DeconSpectrum& spectrum);

}  // namespace TslBL
