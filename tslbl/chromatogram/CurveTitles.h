#pragma once
// What chromatograms are called.

#include <tslbl/Export.h>
#include <tslbl/records/MZPeakField.h>
#include <tslbl/records/MZRange.h>
#include <string>
#include <vector>

namespace TslBL {

// The definition with its letters replaced by what they stand for: "100 to 101-Full m/z range". Throws
// std::out_of_range for a letter without a range.
TSLBL_API std::wstring GenerateEICCurveTitle(const std::wstring& curveDef,
                                             const std::vector<MZRange>& ranges);

// Of the curve of a value of base peaks: "100.0 to 200.0 Amplitude", "Full Mass".
TSLBL_API std::wstring GenerateBICCurveTitle(const MZRange& range, const MZPeakField& field);

}  // namespace TslBL
