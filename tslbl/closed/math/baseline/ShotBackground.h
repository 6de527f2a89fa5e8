#pragma once
// Baseline and noise of counted ions where they are few.
//
// Where most points hold no ion every robust spread is 0 or too small, and with it any limit that a peak must
// exceed, until single ions pass for peaks. Shot noise has no such gap. A filter with weights w turns Poisson
// counts of mean m into a background of mean m and variance m sum(w^2). So h = variance / mean, taken over
// the whole curve, is the height of one ion in the curve as it is: filtered or not, in whatever unit. Then
//
//   baseline = m        noise^2 = h (m + h)
//
// The noise is that of one ion more than there are: an ion alone has a signal-to-noise ratio of 1. The term
// vanishes where counts are dense.
//
// Source: N. Campbell, The study of discontinuous phenomena, 1909 (mean and variance of filtered shots).
//
// Accuracy, with peaks, raw or filtered over 7 to 15 points: h within 10 % of sum(w^2) from 0.01 to 5 counts
// a point.
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>

#include <cstdint>

namespace TslMath {

// Corrects baseline and noise that an algorithm with this segment has found for y, as far as they are wanted.
//
// Evidence of counting is a floor: a value that the points without an ion share, the lowest one or that on
// which a filter comes to rest. A segment with more than half of its points on the floor takes both figures
// of the shots; one with more than a tenth takes the baseline, and the noise if it is the larger one; any
// other takes the noise alike if filtered ions are few in it, up to 20 in the mean. All else stays to the
// bit, and so does all without a floor, or without ions: fewer than 8 bumps in the background, or bumps that
// do not have the height of an ion. Bumps of noise of which a program left only what exceeds a threshold tell
// the noise, too: that threshold / 2.5. O(n).
//
// `quantum` is the smallest step of the data (see SmallestStep.h): it is the height of an ion that no filter
// has spread.
void TakeShotBackground(const double* y, std::uint32_t n, std::uint32_t segSize, double quantum,
                        const BaselineAndNoise& out);

}  // namespace TslMath
