#pragma once
// A deconvolved spectrum as a picture.

#include <tool/frame/Numbers.h>
#include <tool/io/SpectrumSource.h>
#include <optional>
#include <string>

namespace TslTool {

// An SVG document. Above: the measured and the evaluated curve, each fitted peak on the baseline of its
// group, their sum, and the m/z of the fitted peaks. Below: what the sum leaves of the points that were
// fitted, in groups alone, with a band of one standard deviation to either side of 0, that of the counts
// where they are known, else the noise. A fit to be believed leaves nothing that has a shape. `view` is the
// range of m/z that it shows; without one that of all groups, or of the spectrum if it has none.
std::string OverlapPlot(const LoadedSpectrum& loaded, const std::string& title,
                        const std::optional<RealRange>& view);

}  // namespace TslTool
