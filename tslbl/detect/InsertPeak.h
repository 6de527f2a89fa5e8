#pragma once
// One more row for a curve's peak table.
//
// For the sources of the library; not part of its interface.

#include <tslbl/curve/PeakInfo.h>
#include <cstdint>

namespace TslBL {

class Curve;

// Puts the row before the first one whose apex does not lie left of its own, and keeps the indexes of the
// largest peaks in step. Returns its place. Overlap peaks keep their DataPeakId.
std::int32_t InsertPeak(Curve& curve, const PeakInfo& row);

}  // namespace TslBL
