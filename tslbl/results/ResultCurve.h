#pragma once
// Chromatograms in a document of results, and the definitions by which they are made. Each function takes
// one element where the builder or parser stands and leaves it there. "Curve" is the name of both: one that
// was written has points, one that is read has a definition.
//
// The readers never fail. Where no element follows the map stays as it is; an id that is missing or no number
// is 0. A curve that comes later replaces an earlier one of its id.

#include <tslbl/Export.h>
#include <tslbl/records/MZPeakField.h>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TslBL {

// One element "Curve", its id as the attribute "Id", with the points in it, x and y of the same length.
TSLBL_API void AddCurve(XMLBuilder& builder, std::uint32_t id, const std::vector<double>& x,
                        const std::vector<double>& y);

// The text of the child "CurveDef" of one element "Curve", a formula as ExtractedCurves.h has them; empty
// without such a child, which is a curve of zeros.
TSLBL_API void LoadCurveDefs(XMLParser& parser, std::map<std::uint32_t, std::wstring>& definitions);

// The letter of a range, which is the first character in the child "MZRangeDef" that is no white space or 0
// without one, and the value of the base peak in that range that makes the points.
TSLBL_API void LoadBICCurve(XMLParser& parser,
                            std::map<std::uint32_t, std::pair<wchar_t, MZPeakField>>& curves);

}  // namespace TslBL
