#pragma once
// A finished calibration on all scans of an input.

#include <tslbl/tune/MZCalPt.h>
#include <string>
#include <vector>

namespace TslTool {

// Writes the input with its m/z axis made anew: a run as a run, whose counts and tunes stay as they are, an
// mzML file as mzML, a text as text. Scan by scan; the output is whole or not there. Throws InputError, also
// for points that belong to another kind of axis, and UsageError for an output whose name ends in another
// format.
void ApplyToInput(const std::string& input, const std::vector<TslBL::MZCalPt>& points,
                  const std::string& calibrationFile, const std::string& output);

}  // namespace TslTool
