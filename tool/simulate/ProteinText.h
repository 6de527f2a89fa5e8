#pragma once
// A protein as a user types it: NAME=MASS[:CHARGES[:COUNTS]], such as "myoglobin=16951.5:10-20:3000".

#include <tool/simulate/Instrument.h>
#include <tool/simulate/Sample.h>
#include <string>

namespace TslTool {

inline constexpr double kUsualProteinCounts = 3000.0;

// MASS is the average mass in Da. CHARGES is a range or a number; without it, or where it is empty, it is
// those that a protein of this mass usually has, as far as the instrument scans them. COUNTS is the height of
// the highest charge state, in counts a point, whether or not it is scanned. Throws UsageError, which begins
// with
// "--protein: " and the text in quotes, also if none of the charges is scanned.
Compound ParseProtein(const std::string& text, const Instrument& instrument);

}  // namespace TslTool
