#pragma once
// The area of a whole peak.

#include <tslbl/Export.h>
#include <cstdint>

namespace TslBL {

class Curve;

// What lies above the baseline between the limits of a data peak, startIdx and endIdx, in amplitude times
// units of the x axis: all of the peak, where PeakInfo::area is that of the part from which its position was
// taken. Straight lines between points; a curve without a baseline counts from 0. 0 for a row whose limits
// are not on the curve. Throws std::out_of_range if peakIdx is no row of the table.
TSLBL_API double QWholePeakArea(const Curve& curve, std::uint32_t peakIdx);

}  // namespace TslBL
