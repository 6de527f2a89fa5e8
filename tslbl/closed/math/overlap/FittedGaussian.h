#pragma once
// A fitted peak of a group of overlapping peaks.

namespace TslMath {

// A peak as a Gaussian, in the units of x and y of its fit.
//
// Of a fit that took a skew in, it is the Gaussian that has the peak's height, its full width at half
// maximum, its area, and as centre the peak's centre of gravity. The sum of these Gaussians is then not the
// fitted curve.
struct FittedGaussian {
  double height;
  double centre;
  double a3;        // standard deviation
  double baseline;  // of the group
  double fit4;      // reduced chi-square of the group
  double fit5;      // standard error of the centre
  double fit6;      // standard error of the area
};

}  // namespace TslMath
