#pragma once
// The quantum of a curve: what one count is worth.
#include <tslbl/Export.h>

#include <cstddef>

namespace TslMath {

// Smallest non-zero |y[i+1] - y[i]|, 0 if there is none. NaN is passed over. Counts seldom change where the
// background is nearly empty, and the noise estimated there would vanish; half a quantum is its floor.
TSLBL_API double SmallestStep(const double* y, std::size_t n);

}  // namespace TslMath
