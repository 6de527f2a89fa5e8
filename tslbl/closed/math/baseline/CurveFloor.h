#pragma once
// The value of no ion: what the points of a counted curve share where nothing was counted.
#include <cstddef>
#include <optional>

namespace TslMath {

struct CurveFloor {
  double value;
  double rounding;  // how far a filter may have moved a point from it

  // The part of the points that lie on the floor.
  double ShareOf(const double* y, std::size_t n) const;
};

// Filters swing below the floor beside an ion: so it is first of all the one value on which at least 10
// neighbours, and six in ten of all that are equal, agree. Else it is the lowest value, if at least 10
// points have it, as no tail of a continuous noise does. Nothing if there is neither, as for dense counts
// and for analog signals. What is not finite is passed over. O(n).
std::optional<CurveFloor> FindCurveFloor(const double* y, std::size_t n);

}  // namespace TslMath
