#pragma once
// How wide the single peaks of a group are, before it is known how many there are.
#include <span>

namespace TslMath {

// The standard deviation in points of a Gaussian as wide as the strongest peak at half height, of which the
// narrower side is taken twice: the other one may hold a neighbour. At least 1. Not empty, finite.
double WidthAtHalfHeight(std::span<const double> y);

// The same from how sharply the peaks are bent, if one of them is narrower than `width`: where two stand
// close together half the height is no measure. At least 1. `variances` as long as y.
double WidthOfBends(std::span<const double> y, std::span<const double> variances, double width);

}  // namespace TslMath
