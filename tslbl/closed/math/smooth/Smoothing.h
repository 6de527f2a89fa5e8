#pragma once
// Smoothing of equidistant samples: moving mean, moving median, Gaussian and Savitzky-Golay filters.
//
// All four share one contract.
//
//   y      n finite samples, read anywhere.
//   out    indexed as y is: out[i] belongs to y[i]. Only out[start .. end) is written. It may be
//          y itself; the input is then copied first. The caller owns both arrays.
//   end    values above n mean n. An empty stretch, or n = 0, does nothing.
//   width  in points. 0 and 1 copy the stretch. Any larger value is allowed, also one above n.
//
// Stretches. Each output depends on y, n and its own index alone, to the bit: a curve may be filtered in
// pieces of any lengths, in any order and by several threads at a time, and comes out the same. (Not so if
// out is y, since the second piece would read what the first has written.)
//
// Ends. Mean, median and Gaussian shrink the window symmetrically: point i uses min(h, i, n-1-i) points on
// each side, h being the half window. So nothing is shifted, y[0] and y[n-1] come back unchanged, a straight
// line stays a straight line to rounding, and data without negative values stay so. Savitzky-Golay
// extrapolates its polynomial instead.
//
// NaN and infinities make those outputs meaningless whose window holds them, and no others; for
// Savitzky-Golay that includes the h outputs at an end whose first or last window holds them.
//
// Threads: no state is shared; any number of calls may run at the same time on different output stretches.
// Failure: std::bad_alloc only.
#include <tslbl/Export.h>

#include <cstdint>

namespace TslMath {

// Moving mean. Odd width: the mean of `width` points. Even width: width + 1 points of which the outer two
// weigh one half, so that the window stays centred. White noise falls by the factor 1/sqrt(width) for odd
// widths and by sqrt(width - 0.5)/width for even ones. A constant comes back to the bit if its multiples up
// to width are exact, as they are for counts. Sums are formed without subtraction, so a tall peak leaves no
// residue behind it.
// Cost: O(end - start + width).
TSLBL_API void SmoothMean(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end,
                          std::uint32_t width, double* out);

// Moving median. An even width is rounded up to the next odd one, so that each output is one of the samples.
// NaN counts as larger than any number, -0 as smaller than 0.
// Cost: O(width) a point up to 151 points, far less up to 25 than above; O(log width) a point above 151.
// Sources: K. Batcher, Sorting networks and their applications, 1968; W. Haerdle and W. Steiger,
// Optimal median smoothing (AS 296), 1995.
TSLBL_API void SmoothMedian(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end,
                            std::uint32_t width, double* out);

// Gaussian filter. `width` is the full width at half maximum of the kernel in points: sigma = width/2.35482.
// A Gaussian peak of FWHM f comes out with sqrt(f*f + width*width), within 0.2 %. The kernel reaches to 4.5
// sigma and is normalised to 1, also where the window shrinks. White noise falls by 1/sqrt(2 sqrt(pi) sigma):
// to 0.3645 at width 5.
// Cost: O((end - start) * min(width, n)).
TSLBL_API void SmoothGaussian(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end,
                              std::uint32_t width, double* out);

// Savitzky-Golay filter: the value at the centre of the polynomial of degree `order` that fits `width`
// points best by least squares. An even width is rounded up; a width above n becomes the largest odd number
// not above n. The first and the last half window of the array take the values of the polynomial fitted to
// the first and the last window. An order above width - 2 passes through every point: a plain copy. Orders
// 0 and 1 are the moving mean inside; an odd order equals the even one below it there. A polynomial of
// degree <= order comes back within 1e-10 of its largest absolute value, ends included.
// The order is lowered where width * order^2 exceeds 1e8: to 316 at width 1001, to 40 at width 60 001.
// Cost: O((end - start) * width + width * order^2).
// Sources: A. Savitzky and M. Golay, Smoothing and differentiation of data by simplified least squares
// procedures, 1964; P. Gorry, General least-squares smoothing and differentiation by the convolution
// (Savitzky-Golay) method, 1990.
TSLBL_API void SmoothSavitzkyGolay(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end,
                                   std::uint32_t width, std::uint32_t order, double* out);

}  // namespace TslMath
