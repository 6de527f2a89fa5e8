#pragma once
// Taking series out of a deconvolved spectrum.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <functional>

namespace TslTool {

// The mass curve is drawn anew. None left is a result as well. Throws std::runtime_error with the library's
// text.
void DropSeries(TslBL::DeconSpectrum& spectrum,
                const std::function<bool(const TslBL::CSSeriesInfo& series)>& isUnwanted);

// Takes out resolved series with a fitted peak of which nobody knows by 0.2 of an isotope where it stands.
void DropUnsureSeries(TslBL::DeconSpectrum& spectrum);

}  // namespace TslTool
