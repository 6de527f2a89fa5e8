#pragma once
// The m/z axis of a spectrum, whose points lie on an even grid of mass DAC values.

#include <tslbl/Export.h>
#include <tslbl/tune/MZConvert.h>
#include <cstddef>
#include <vector>

namespace TslBL {

// The m/z of the DAC values start, start + step, start + 2 step ... The numbers are to the
// bit those of MZConvert::DACToMZ, and so are its failures; but each segment's line is laid
// once, so that the time is linear in the number of points and does not grow with the
// calibration.
TSLBL_API std::vector<double> MassAxis(const MZConvert& convert, double start, double step,
                                       std::size_t points);

}  // namespace TslBL
