#pragma once
// Three baselines of a spectrum: what the amplitude would be without signal, for every point.
//
// Arrays. y and out have n values; the caller owns both. out may not overlap y. n = 0 does nothing; up to two
// points give their minimum. The samples are taken as equidistant. They need not be counts: scaled or
// averaged data give the scaled result.
//
// Method. All three end in the same robust kernel: the curve is cut into segments, each gets a straight line
// through those points that are background by their own scatter, and the lines are blended from one segment's
// centre to the next. V-F and Adaptive first find a shape (a polygon through the valleys, a morphological
// opening) and run the kernel on what stands above it, so all three lie in the middle of the background's
// noise and not along its lower edge. A constant comes back as it is, a straight line within 1e-12 of its
// largest value.
//
// Accuracy on Poisson counts, peaks of 12 points FWHM, background of at least 5 counts: up to one peak in 100
// points the mean deviation is below 0.15 and the rms deviation below 0.3 of the background's noise; at 1.5
// peaks in 100 points the rms is below 0.5. Below one count per point the result is low by about 0.03 counts.
// Where peaks stand closer than two widths everywhere, no background shows between them, and the result is
// roughly the level of their feet.
//
// Both ends follow the line of the last segment; beyond nothing is read.
//
// Parameters may have any value.
//   segSize  points in a segment, 250 recommended. A curve is cut into round(n / segSize) equal segments, at
//            least one. 0 counts as 1.
//   others   see each function. 0 counts as 1; values above n act like n.
//
// Data that are not finite: a NaN or an infinite sample is never background. A few of them leave the rest
// of the curve as it is; a segment full of them is bridged by its neighbours; a curve full of them gives NaN
// or infinities. Nothing crashes or loops.
//
// Cost: O(n), for Adaptive O(n log segSize), in one thread; work memory of a few segments, for Adaptive of
// about n values. Threads: no state is shared. Failure: std::bad_alloc only.
//
// Who wants the noise with the baseline finds both in one pass in BaselineAndNoise.h.
//
// Sources: W. Dietrich, C. Ruedel, M. Neumann, Fast and precise automatic baseline correction of one- and
// two-dimensional NMR spectra, 1991; S. Golotvin, A. Williams, Improved baseline recognition and modeling of
// FT NMR spectra, 2000; P. Rousseeuw, Least median of squares regression, 1984; A. Atkinson, Fast very robust
// methods for the detection of multiple outliers, 1994.
#include <tslbl/Export.h>

#include <cstdint>

namespace TslMath {

// Valley following. The lower half of the valleys of each segment gives a corner of a polygon; corners that
// stand on a peak are left out. Segments of 250 points or more for the kernel. On noise-free data with slopes
// the valleys lie off the line by up to the slope times half a segment, and part of that stays.
TSLBL_API void VFBaseline(const double* y, std::uint32_t n, std::uint32_t segSize, double* out);

// Adaptive opening: everything narrower than segSize is taken off, or narrower than two or four times as much
// where peaks stand in wider groups. segSize must exceed the base of the widest single peak. `window` points
// of averaging, done twice, smooth the shape; 25 recommended. Both are rounded to multiples of 5 points.
// Source of the morphology: R. Perez-Pueyo, M. Soneira, S. Ruiz-Moreno, Morphology-based automated baseline
// removal for Raman spectra of artistic pigments, 2010.
TSLBL_API void APBMorph(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t window,
                        double* out);

// The kernel alone. A point is background if it is within `width` standard deviations of the line (3
// recommended; 1 is the strictest) and the mean of `points` neighbours is not more than so far above it (5
// recommended, an even number counts as the next odd one), which finds the feet of peaks. A segment needs
// max(2 * points, 8) points to be judged; shorter ones are lengthened to that, and a curve of less than
// 3 * points is one segment.
TSLBL_API void LinearFitSDBaseline(const double* y, std::uint32_t n, std::uint32_t segSize,
                                   std::uint32_t points, std::uint32_t width, double* out);

}  // namespace TslMath
