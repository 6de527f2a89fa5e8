#pragma once
// The deviations of calibrants as a picture.

#include <tool/commands/calibrate/CalibrateSpectrum.h>
#include <string>
#include <vector>

namespace TslTool {

// An SVG document: ppm over m/z, before and after, of every calibrant that has a peak.
std::string ResidualPlot(const std::vector<CalibratedPoint>& points, const std::string& title);

}  // namespace TslTool
