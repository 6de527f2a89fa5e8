#pragma once
// Filter with a symmetric kernel that shrinks at the ends of the curve.
#include <tslbl/closed/math/smooth/SmoothStretch.h>

#include <cstddef>
#include <vector>

namespace TslMath {

// out[i] = weight[0] y[i] + sum over j of weight[j] (y[i-j] + y[i+j]), j up to HalfAt(i). weight[j] belongs
// to the distance j. Terms are added in the order of j for every output, whatever the stretch. `out` is not
// y.
void FilterSymmetric(const double* y, const SmoothStretch& stretch, const std::vector<double>& weight,
                     double* out);

}  // namespace TslMath
