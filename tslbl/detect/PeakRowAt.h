#pragma once
// The row of the peak table for a point that a user picks.
//
// For the sources of the library; not part of its interface.

#include <cstdint>

namespace TslBL {

class Curve;

// The row of the peak that spans the point; if there is none, one is searched for there and added, see
// FindOnePeak.h. -1 if that finds none.
std::int32_t PeakRowAt(Curve& curve, std::uint32_t curveIdx);

}  // namespace TslBL
