#pragma once
// How much the points of a group scatter.
#include <cstddef>
#include <span>
#include <vector>

namespace TslMath {

// The variance of a point: `variancePerMean` times its mean, and the square of `distortion` times the highest
// point, which is by how much a filter may have changed the curve.
struct GroupNoise {
  double variancePerMean = 1.0;
  double distortion = 0.0;
};

// The moving mean of five points, of fewer at the ends.
std::vector<double> LocalMeans(std::span<const double> y);

// The variance of a point divided by its mean: 1 for counts, f for counts that were multiplied by f. From
// sixth differences of points `stride` apart, in which a Gaussian peak leaves nothing whose standard
// deviation is 2.5 strides or more. Neighbours of a curve that was smoothed differ by less than its noise;
// points farther apart show more of it. 1 for fewer than 9 strides, or where it cannot be told. Finite
// amplitudes. O(n).
double VariancePerMean(std::span<const double> y, std::size_t stride = 1);

}  // namespace TslMath
