#pragma once
// The peaks of a spectrum in m/z and amplitude.

#include <tslbl/Export.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// A row of the peak table. It is reported at its maximum or at its centroid, as the row
// says. Throws std::runtime_error "Peak table is empty." and std::out_of_range for an index
// beyond the table.
TSLBL_API MZPeak TranslateMZPeak(const Spectrum& spectrum, std::uint32_t peakIdx);

// An overlap peak, by its index among them. Area, width and limits are those of the fitted
// Gaussian, centred on its m/z; its width is in points, as the fit stores it. Throws std::runtime_error
// "Overlap peak table is empty." and "Out of range overlap peak index.".
TSLBL_API MZPeak TranslateMZOverlapPeak(const Spectrum& spectrum, std::uint32_t opdIdx);

// All rows of the peak table and then all overlap peaks, so that a row's place is its
// spectrum peak id. Data peaks that overlap peaks stand for are in it too.
TSLBL_API std::vector<MZPeak> CreateMZPeakTable(const Spectrum& spectrum);

// The peak that spans a point; if there is none, one is searched for there with the
// spectrum's parameters and added to the peak table. False if that finds none. Overlap
// peaks keep their DataPeakId: whoever adds a row to a table that has any renumbers them
// (RenumberDataPeakIds).
TSLBL_API bool DetectOnePeak(Spectrum& spectrum, std::uint32_t curveIdx, MZPeak& peak);

// The peak that spans a point: its data peak, or, if that is overlapped, the first overlap
// peak on it. False if there is none; `peak` is then of no use.
TSLBL_API bool QPeakAttrByCurveIdx(const Spectrum& spectrum, std::uint32_t curveIdx, MZPeak& peak);

}  // namespace TslBL
