#pragma once
// A deconvolved spectrum as a picture.

#include <tool/frame/Numbers.h>
#include <tool/io/SpectrumSource.h>
#include <optional>
#include <string>

namespace TslTool {

// An SVG document. Above: the evaluated curve with the ladder of charges of each series in its colour: solid
// lines where the series has a peak, broken ones where its mass has a place for one, and the charge over the
// tallest. Below: the curve over mass, with the masses of the series. `view` is the range of m/z that it
// shows; all without one.
std::string DeconPlot(const LoadedSpectrum& loaded, const std::string& title,
                      const std::optional<RealRange>& view);

}  // namespace TslTool
