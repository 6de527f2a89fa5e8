#pragma once
#include <tslbl/Export.h>

#include <vector>

namespace TslMath {

// The values divided by the largest of them, so that the largest becomes exactly 1. Signs are kept and NaN is
// passed over. Values of which none is above 0, or the largest is infinite, cannot be scaled so: they come
// back unchanged, as does an empty vector.
TSLBL_API std::vector<double> Normalize(const std::vector<double>& values);

}  // namespace TslMath
