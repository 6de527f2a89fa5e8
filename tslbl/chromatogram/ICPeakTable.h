#pragma once
// The peaks of a chromatogram.

#include <tslbl/Export.h>
#include <tslbl/chromatogram/ICObj.h>
#include <tslbl/chromatogram/ICPeak.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// A row of the peak table, with all spectra from its start to its end. Throws std::runtime_error "Peak table
// is empty." and std::out_of_range for an index beyond the table.
TSLBL_API ICPeak TranslateICPeak(const ICObj& obj, std::uint32_t peakIdx);

// All rows of the peak table in their order.
TSLBL_API std::vector<ICPeak> CreateICPeakTable(const ICObj& obj);

// The peak that spans a point; if there is none, one is searched for there with the curve's parameters and
// added to the peak table. False if that finds none.
TSLBL_API bool DetectOnePeak(ICObj& obj, std::uint32_t curveIdx, ICPeak& peak);

// The ids of the spectra up to `halfWidth` points to either side of the point where the peak is reported,
// within the peak: of the higher neighbour if that place is half way between two points, else of the nearest.
// Fewer if sourceListA is shorter than the curve. Throws as TranslateICPeak does.
TSLBL_API std::vector<std::uint32_t> QSpectrumUnderPeak(const ICObj& obj, std::uint32_t peakIdx,
                                                        std::uint32_t halfWidth);

}  // namespace TslBL
