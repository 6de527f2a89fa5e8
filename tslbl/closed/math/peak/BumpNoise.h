#pragma once
// How high the bumps of noise alone are.

#include <cstddef>
#include <vector>

namespace TslMath {

// The amplitude of an ion, as far as the curve tells it: the tenth part of the steps between unequal
// neighbours is smaller. Of counts it is one count up to some 15 counts a point; of other noise a fifth of
// its standard deviation; not below a millionth of the largest step; 0 for a level curve. O(n).
double LikelyIon(const std::vector<double>& y);

// The variance of a curve's noise.
class NoiseVariance {
 public:
  // `lag` is 1 for a curve as it was measured, and the filter's width in points for a filtered one. The curve
  // is kept by reference.
  NoiseVariance(const std::vector<double>& y, std::size_t lag, double ion);

  // About this point, or everywhere if that is more. From second differences over `lag` points: that of the
  // quieter half, so that peaks hardly count, but not below what ions of amplitude `ion` bring, which is all
  // that is left of a background where most points are empty. Infinite for less than 2 lag + 1 points.
  double At(std::size_t point) const;
  double Everywhere() const { return everywhere_; }

 private:
  double Within(std::size_t from, std::size_t to, std::size_t most) const;

  const std::vector<double>& y_;
  std::size_t lag_;
  double ion_;
  double everywhere_;
};

// Noise at so many independent places.
struct BumpNoise {
  double variance;
  double ion;
  double places;

  // How far the lowest of the places lies below their mean, if the noise is Gaussian.
  double Depth() const;
  // How far above the mean none of the places lies with a probability of 0.999: by Bennett's inequality,
  // which holds for Gaussian noise as for a few ions.
  double Height() const;
  // The same about the top of a peak of this height, whose own ions are noise too.
  BumpNoise With(double height) const;
};

}  // namespace TslMath
