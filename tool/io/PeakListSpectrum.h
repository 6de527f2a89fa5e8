#pragma once
// A list of peaks, such as centroid data, as a spectrum whose peaks have been detected.

#include <tslbl/spectrum/Spectrum.h>
#include <memory>
#include <span>

namespace TslTool {

// Every peak is a triangle of three points on a baseline of 0, all of them about equally wide and none wider
// than the room that its neighbours leave; the peak table has the places and intensities of the list, the
// intensity standing for the area as well. Noise is a third of the weakest peak: that was just seen. `mz`
// ascends, and `intensity` is as long; several peaks at one m/z are added up, and those whose intensity or
// m/z is not above 0 are left out.
std::unique_ptr<TslBL::Spectrum> PeakListSpectrum(std::span<const double> mz,
                                                  std::span<const double> intensity);

}  // namespace TslTool
