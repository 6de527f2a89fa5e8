#include <tslbl/detect/PeakRowAt.h>

#include <tslbl/curve/Curve.h>
#include <tslbl/detect/FindOnePeak.h>
#include <tslbl/detect/FindPeak.h>

namespace TslBL {

std::int32_t PeakRowAt(Curve& curve, std::uint32_t curveIdx) {
  const std::int32_t row = FindPeakIdxByCurveIdx(curve.peaks, curveIdx);
  return row < 0 ? FindOnePeak(curve, curveIdx) : row;
}

}  // namespace TslBL
