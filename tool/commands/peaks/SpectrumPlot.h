#pragma once
// An evaluated spectrum as a picture.

#include <tool/frame/Numbers.h>
#include <tool/io/SpectrumSource.h>
#include <optional>
#include <string>

namespace TslTool {

// An SVG document: the measured and the evaluated curve, the baseline, a band of one noise to either side of
// it, and the peaks with their m/z, the tallest first where there is no room for all. `view` is the range of
// m/z that it shows, all without one; the amplitudes follow what is in it. It has some 100 kB at most,
// whatever the number of points.
std::string SpectrumPlot(const LoadedSpectrum& loaded, const std::string& title,
                         const std::optional<RealRange>& view);

}  // namespace TslTool
