#pragma once
// How uncertain the place and the area of a fitted peak are: standard errors.

namespace TslMath {

struct FitError {
  double centroid;
  double area;
};

}  // namespace TslMath
