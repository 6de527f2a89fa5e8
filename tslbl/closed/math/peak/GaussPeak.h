#pragma once
// A Gaussian peak on a constant offset:
//   y(x) = height * exp(-(x - centre)^2 / (2 A3^2)) + offset
// A3 is the standard deviation, in the units of the centre. Its sign does not matter; 0 is a line of no width
// and no area. All queries are plain arithmetic on the four numbers: exact to rounding, never failing, safe
// from any thread.
#include <tslbl/Export.h>

namespace TslMath {

class TSLBL_API GaussPeak {
 public:
  GaussPeak(double height, double centre, double a3, double offset);

  // Full width at half maximum and A3 of one shape: FWHM = 2 sqrt(2 ln 2) A3.
  static double FWHM_to_A3(double fwhm);
  static double A3_to_FWHM(double a3);

  // Area above the offset, over the whole axis.
  double QArea() const;

  // Where the peak has half its height above the offset.
  double QHalfHeightLeftX() const;
  double QHalfHeightRightX() const;

  // Three A3 from the centre, where 1.1 % of the height is left; 99.73 % of the area lies between the two.
  double QPeakStart() const;
  double QPeakEnd() const;

  // The offset.
  double Qd() const;

 private:
  double height_;
  double centre_;
  double width_;
  double offset_;
};

}  // namespace TslMath
