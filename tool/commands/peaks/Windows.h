#pragma once
// Spectra of which only windows were measured, as in selected ion monitoring.

#include <tslbl/spectrum/Spectrum.h>
#include <optional>

namespace TslTool {

// A curve goes on from one point to the next, and so do its peaks, over whatever lies between. Ends them with
// the window that holds their apex. Returns the m/z of the first whose window is too short: it cuts the peak
// above half its height, or it is not twice as long as that of the smoothing, which mixes it with the next
// one. Nothing if there is none.
std::optional<double> EndPeaksWithTheirWindows(TslBL::Spectrum& spectrum);

}  // namespace TslTool
