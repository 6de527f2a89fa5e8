#pragma once
// Where a group of peaks is bent most: each peak, and many a shoulder that has no maximum, has a place where
// the second derivative of the smoothed curve is lowest. Source: P. Du, W. Kibbe, S. Lin, Improved peak
// detection in mass spectrum by incorporating continuous wavelet transform, 2006 (the Mexican hat as filter).
#include <cstddef>
#include <span>
#include <vector>

namespace TslMath {

struct Bend {
  std::size_t at;
  double strength;      // what the filter gives there
  double significance;  // the same in standard deviations
};

// What counts as a bend.
struct BendLimits {
  double significance;
  double prominence;  // above the places that part it from stronger ones, in standard deviations
  double share;       // of the strongest
  // The same where the curve has a maximum of its own, as no tail has.
  double shareOfTop = 1.0;
};

// The filter for the second derivative, upside down, of a curve smoothed with a Gaussian of standard
// deviation `scale` in points, which is at least 0.8 here. The first and the last point go on beyond the
// ends.
class CurvatureScan {
 public:
  // Both of one length, at least one point.
  CurvatureScan(std::span<const double> y, std::span<const double> variances, double scale);

  // In ascending order.
  std::vector<Bend> Bends(const BendLimits& limits) const;

  // Sum of the smoothing filter, whose middle is 1.
  double GaussianSum() const { return gaussianSum_; }

  // At a bend: the value of the smoothed curve above `base` over its second derivative, which is the square
  // of the standard deviation of a Gaussian peak there, smoothing included.
  double SquaredWidth(const Bend& bend, double base) const;

 private:
  std::vector<char> TopsOfCurve(double prominence) const;

  std::span<const double> y_;
  std::span<const double> variances_;
  double scale_;
  std::vector<double> gaussian_;  // from the middle outwards
  double gaussianSum_;
  std::vector<double> strengths_;
  std::vector<double> deviations_;
};

}  // namespace TslMath
