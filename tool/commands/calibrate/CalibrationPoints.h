#pragma once
// Calibration files as the tool reads and writes them.

#include <tslbl/tune/MZCalPt.h>
#include <string>
#include <vector>

namespace TslTool {

// The points by ascending m/z. Throws InputError for a file that cannot be read, is none, is of another
// version or cut short, and for points of which no axis can be made: less than two, values that are not
// finite, or DAC values that do not rise with m/z.
std::vector<TslBL::MZCalPt> ReadCalibration(const std::string& file);

// The file is whole or as it was. Throws InputError.
void WriteCalibration(const std::string& file, const std::vector<TslBL::MZCalPt>& points);

}  // namespace TslTool
