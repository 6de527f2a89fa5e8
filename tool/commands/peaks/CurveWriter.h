#pragma once
// The evaluated curves themselves, point by point, for plots and for other programs.

#include <tool/io/SpectrumSource.h>
#include <string>

namespace TslTool {

// Columns scan, rt_s, mz, amplitude, baseline, noise, with full precision. What the chain
// did not compute is left empty; without any command the amplitudes are those of the file.
std::string CurveHead();
std::string CurvePart(const LoadedSpectrum& loaded);

}  // namespace TslTool
