#pragma once
// Making a user's edits on the series of a deconvolved spectrum.

#include <tool/commands/decon/SeriesEdits.h>
#include <tslbl/chargestate/DeconSpectrum.h>

namespace TslTool {

// A peak is named by its m/z: the nearest one, not farther off than its width, or 0.05 m/z if that is more.
// What changes is worked out anew, and the mass curve is drawn anew; without a series left there is none.
// Throws std::runtime_error with the reason; the spectrum is of no use then.
void EditSeries(TslBL::DeconSpectrum& spectrum, const SeriesEdit& edit);

}  // namespace TslTool
