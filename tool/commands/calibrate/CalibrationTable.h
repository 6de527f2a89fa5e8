#pragma once
// What a calibration tells of its calibrants.

#include <tool/commands/calibrate/CalibrateSpectrum.h>
#include <string>
#include <vector>

namespace TslTool {

// For reading: m/z before and after with their deviations in m/z and ppm, and whether the calibrant took
// part.
std::string CalibrationTable(const std::vector<CalibratedPoint>& points);

// For programs: columns calibrant, mz_expected, mz_before, ppm_before, mz_after, ppm_after, status, with full
// precision; what is not known is empty. The status is "used", "no peak" or "off".
std::string CalibrationTsv(const std::vector<CalibratedPoint>& points);

// In parts per million of what is expected.
double PpmOf(double mz, double expected);

}  // namespace TslTool
