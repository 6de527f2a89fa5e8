#pragma once
// The calibrants of a known substance, from a file.

#include <tslbl/calibrate/CalibrateParams.h>
#include <string>

namespace TslTool {

// Text with a name and an m/z a line, in this order, between blanks, a tab, a comma or a semicolon; a name
// may hold blanks, and a line with an m/z alone is named after it. Blank lines and lines that begin with #
// are skipped, and so is one of names of columns, without a digit, before all others. Or the library's own
// record, which also tells the tolerance. Any order. Throws InputError for what is no m/z above 0, for a name
// or an m/z that stands twice, and for less than two calibrants.
TslBL::CalibrateParams ReadCalibrants(const std::string& file);

}  // namespace TslTool
