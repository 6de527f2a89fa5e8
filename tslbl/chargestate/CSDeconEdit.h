#pragma once
// Editing the series of a spectrum after charge state deconvolution: a user adds a series from chosen peaks,
// deletes series, adds peaks to a series or takes peaks out of one. The engines are asked anew, with the
// parameters in the spectrum, and the mass curve is drawn anew. Peaks are named by their spectrum peak ids.
//
// All return false with a message in `error` if the spectrum has not been deconvolved, if what is named there
// is not, if an engine cannot be made or fails (its own text), and if no series is left or found. What was
// done until then stays: a series that was to be deleted is gone though the curve could not be drawn. None of
// them enters the history. Throw ComError (closed/common/ComponentRegistry.h) from an engine that fails and
// cannot even say why.

#include <tslbl/Export.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

// Adds the series that the engine of the type finds from these peaks.
TSLBL_API bool CSDeconAddSeries(DeconSpectrum& spectrum, CSSeries::Types type,
                                const std::vector<std::uint32_t>& peakIds, std::wstring& error);

// With no series left that has peaks, the mass curve is empty, and the result false with the message that
// nothing was found. None to delete is true.
TSLBL_API bool CSDeconDeleteSeries(DeconSpectrum& spectrum, const std::vector<CSSeries>& series,
                                   std::wstring& error);

// A resolved series is worked out anew from its monoisotopic peaks and those added, an unresolved one from
// all its peaks and those added. No peaks to add is true.
TSLBL_API bool CSDeconAddSeriesPeaks(DeconSpectrum& spectrum, const CSSeries& series,
                                     const std::vector<std::uint32_t>& peakIds, std::wstring& error);

// A series that would not be valid without the peaks (DeconSpectrum::IsSeriesValid) is deleted; any other is
// worked out anew from those that it keeps, as above. No peaks to take out is true.
TSLBL_API bool CSDeconDeleteSeriesPeaks(DeconSpectrum& spectrum, const CSSeries& series,
                                        const std::vector<std::uint32_t>& peakIds, std::wstring& error);

}  // namespace TslBL
