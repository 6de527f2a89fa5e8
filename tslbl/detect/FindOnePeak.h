#pragma once
// One peak, picked by hand at a point of the curve.

#include <tslbl/Export.h>
#include <cstdint>

namespace TslBL {

class Curve;

// Finds, describes and adds to the curve's table the peak that spans the point, with the
// parameters in the curve; runs the baseline and noise steps first where they have not run.
// Selection is not applied, no status is set and nothing else enters the history: a peak
// picked by hand is in the table in its own right. Returns its row in the table, or -1 if
// there is none.
TSLBL_API std::int32_t FindOnePeak(Curve& curve, std::uint32_t curveIdx);

}  // namespace TslBL
