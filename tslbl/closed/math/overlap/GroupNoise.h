#pragma once
// How much the points of a group scatter.
#include <span>
#include <vector>

namespace TslMath {

// The moving mean of five points, of fewer at the ends.
std::vector<double> LocalMeans(std::span<const double> y);

// The variance of a point divided by its mean: 1 for counts, f for counts that were multiplied by f. From
// sixth differences, in which a Gaussian peak that is more than seven points across leaves nothing. 1 for
// fewer than 9 points, or where it cannot be told. Finite amplitudes. O(n).
double VariancePerMean(std::span<const double> y);

}  // namespace TslMath
