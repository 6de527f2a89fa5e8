#pragma once
// A peak of a chromatogram as the user sees it: one flat row, with x in the units of its curve and the ids of
// the spectra under it. A row holds all that it says; it does not refer back to its curve.

#include <tslbl/Export.h>
#include <tslbl/records/PeakValues.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <vector>

namespace TslBL {

struct TSLBL_API ICPeak : SerialRecord<ICPeak>, PeakValues {
  std::uint32_t CurveId = 0;
  std::uint32_t PeakId = 0;  // its row in the peak table
  std::vector<std::uint32_t> SpecIds;
};

TSLBL_API void Describe(Archive& ar, ICPeak& peak);

}  // namespace TslBL
