#pragma once
// Moving minimum and maximum, and the opening of a curve. The extremum of a window is that of two overlapping
// shorter ones, which are made of four of a quarter of their length, and so on. That takes some passes more
// the longer the window, but passes that work on neighbours side by side: faster than three comparisons a
// point one after the other, up to windows of a whole spectrum.

#include <tslbl/Export.h>

#include <cstddef>
#include <vector>

namespace TslMath {

// Work arrays of the calls below; keep one for a series of calls, and one a thread.
struct ExtremaScratch {
  std::vector<double> work;
  std::vector<double> heads;
  std::vector<double> tails;
};

// out[i] = least (greatest) of y[i-h .. i+h], h = length/2, so an even length counts as the next odd one. At
// the ends the window is cut off with the curve. Any length; 0 and 1 copy. `out` may be y. Cost: O(n log
// length). NaN in y makes the values within a window's reach of it meaningless.
void MovingMinimum(const double* y, std::size_t n, std::size_t length, double* out, ExtremaScratch& scratch);
void MovingMaximum(const double* y, std::size_t n, std::size_t length, double* out, ExtremaScratch& scratch);

// The moving maximum of the moving minimum: what is left of a curve when every elevation narrower than the
// window is taken off. Nowhere above y. `out` may be y.
TSLBL_API void MovingOpening(const double* y, std::size_t n, std::size_t length, double* out,
                             ExtremaScratch& scratch);

}  // namespace TslMath
