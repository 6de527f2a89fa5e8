#pragma once
// A calibration in a file of its own.

#include <tslbl/Export.h>
#include <tslbl/tune/MZCalPt.h>
#include <string>
#include <vector>

namespace TslBL {

// The file is whole or as it was. False if it cannot be written.
TSLBL_API bool SaveCalFile(const std::wstring& path, const std::vector<MZCalPt>& points);

// False if the file cannot be read or is not of version 1. Throws std::runtime_error for one that is cut
// short or has a point of a version that is not known. Either way `points` stay as they were.
TSLBL_API bool LoadCalFile(const std::wstring& path, std::vector<MZCalPt>& points);

}  // namespace TslBL
