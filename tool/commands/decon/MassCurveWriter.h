#pragma once
// The curves over mass, point by point, for plots and for other programs.

#include <tool/io/SpectrumSource.h>
#include <string>

namespace TslTool {

// Columns scan, rt_s, mass, density, with full precision. A density is amplitude times m/z a Da, so that the
// area under a molecule is that of its peaks.
std::string MassCurveHead();
std::string MassCurvePart(const LoadedSpectrum& loaded);

}  // namespace TslTool
