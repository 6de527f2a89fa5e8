#pragma once
// How wide the peaks of a curve are, before anything else is known of it.
#include <tslbl/Export.h>

#include <cstdint>

namespace TslMath {

struct PeakWidth {
  double points = 0.0;  // across a peak at half height; 0: no peak can be told from noise
  // How far the peaks that it was taken from stand out, all together: the root of the sum of squares of how
  // many times as high each is as noise, its own ions included, might be. At least 2.5, at most 100 a peak.
  // Its square grows with the ions of the peaks, so it is the weight of the width among those of other
  // curves.
  double strength = 0.0;
};

// The full width at half height of the curve's strongest peaks.
//
// Peaks are ranked by prominence: how far one rises above the higher of the two lowest places that part it
// from higher points, so that a hump below the peaks does not matter. A peak's height is its prominence
// without what the lows owe to noise, and its width is that at half of it, on straight lines between points.
// The width of a curve is the median over its 32 most prominent peaks, weighted by the root of the
// prominence; or their lower quartile where that is below 0.6 of it, as what smooths broad peaks well ruins
// narrow ones. Peaks below a twentieth of the largest prominence count down to a four hundredth if they stand
// alone and four times as high as noise. What is wider than 512 points is background.
//
// Noise makes bumps of its own, and bumps on wide and weak peaks. So the curve is looked at through Gaussian
// filters of 0, 2, 4 .. 128 points, whose share is taken out of the width again, and a peak counts as far as
// it is higher than noise through that filter: than the highest of as many bumps as there are places, with a
// probability of 0.999. The result is the first width that the next filter changes by 15 % at
// most, and the one after it by 35 %; for weak peaks that of the widest filter, up to 0.6 widths, that still
// agrees. Lines that stand close, as isotopes do, merge in filters that then agree on the width of the group:
// so the main lines of a narrower filter decide, if noise cannot make them and they are at most 0.6 times as
// wide. Peaks that are too weak for their width to be told give 0.
//
// Samples that are not finite count as the lowest one. O(n).
//
// Accuracy: within 5 % for lines of 30 to 10 000 counts, 3 to 100 points wide, over 0.01 to 100 counts; up to
// 30 % too narrow for lines of 2 to 10 counts. Counts and Gaussian noise alone give 0. Noise of a curve that
// was smoothed over 5 points or more before may pass for peaks of one to three times that width. Peaks of
// equal height that fill a curve without a gap give 0.
TSLBL_API PeakWidth MeasurePeakWidth(const double* y, std::uint32_t n);

// Its points alone.
TSLBL_API double TypicalPeakWidth(const double* y, std::uint32_t n);

}  // namespace TslMath
