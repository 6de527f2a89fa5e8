#pragma once
// A spectrum on the axis of another calibration.
//
// For the sources of the library; not part of its interface.

#include <tslbl/spectrum/Spectrum.h>
#include <vector>

namespace TslBL {

// Replaces the applied calibration and makes the x axis anew. If MZAssign throws, the spectrum is as it was.
void PutOnAxis(Spectrum& spectrum, std::vector<MZCalPt> points);

}  // namespace TslBL
