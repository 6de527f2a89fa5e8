#pragma once
// The exponential function of four numbers side by side, the same bits on every machine.
#include <tslbl/closed/math/Lanes.h>

#include <cstdint>

namespace TslMath {

constexpr int kExponentAt = 52;  // bit of a double

// value times 2^k, k being in the low bits of `power`.
TSLBL_INLINE void TimesPowerOfTwo(const Lanes& power, Lanes& value) {
  value = (Lanes)((LaneMask)value + ((LaneMask)power << kExponentAt));
}
TSLBL_INLINE void TimesPowerOfTwo(const WideLanes& power, WideLanes& value) {
  using Bits = std::int64_t __attribute__((vector_size(sizeof(WideLanes))));
  value = (WideLanes)((Bits)value + ((Bits)power << kExponentAt));
}

// exp(x) for x from -700 to 700, within 3e-16 of it relative to it; of other x something meaningless.
// Source: J. Hart et al., Computer Approximations, 1968 (reduction by multiples of ln 2).
// `Vector` is Lanes or WideLanes.
template <class Vector>
TSLBL_INLINE void FastExp(const Vector& x, Vector& result) {
  constexpr double kPerLn2 = 1.4426950408889634;
  // ln 2 in two parts, of which the first has so few digits that its multiples are exact.
  constexpr double kLn2High = 6.93147180369123816490e-01;
  constexpr double kLn2Low = 1.90821492927058770002e-10;
  // Added and taken off, this rounds to a whole number, which stands in the low bits in between.
  constexpr double kRounder = 6755399441055744.0;  // 1.5 * 2^52

  const Vector shifted = x * kPerLn2 + kRounder;
  const Vector whole = shifted - kRounder;
  const Vector rest = (x - whole * kLn2High) - whole * kLn2Low;
  // 1 / k! from k = 12 down.
  Vector sum = Vector{} + 2.08767569878680989792e-09;
  for (const double coefficient :
       {2.50521083854417187751e-08, 2.75573192239858906526e-07, 2.75573192239858906526e-06,
        2.48015873015873015873e-05, 1.98412698412698412698e-04, 1.38888888888888888889e-03,
        8.33333333333333333333e-03, 4.16666666666666666667e-02, 1.66666666666666666667e-01, 0.5, 1.0, 1.0})
    sum = sum * rest + coefficient;
  TimesPowerOfTwo(shifted, sum);
  result = sum;
}

}  // namespace TslMath
