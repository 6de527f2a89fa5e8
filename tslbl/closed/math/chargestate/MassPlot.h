#pragma once
// Peaks of charged molecules drawn over the axis of neutral mass.
//
// A profile over m/z becomes one over mass: the place x of charge z becomes z (x - a), a being the mass of
// the carrier, and the height falls by z, so that areas stay. All peaks of a series are put on one lattice of
// masses and added. That keeps the area and the centre of gravity of each, and widens it by less than a
// hundredth: a peak's straight lines are held against the hat functions of the lattice, as masses are
// assigned to cells in R. Hockney, J. Eastwood, Computer simulation using particles, 1981 ("cloud in cell").
#include <tslbl/Export.h>

#include <cstdint>
#include <span>
#include <vector>

namespace TslMath {

// A curve of straight lines between points, 0 outside of them.
struct MassCurve {
  std::vector<double> mass;  // Da, ascending, each once
  std::vector<double> density;
};

// Points of one peak over m/z.
struct ChargedProfile {
  std::span<const double> mz;         // in any order; of several points at one place the mean counts
  std::span<const double> amplitude;  // as many; the baseline taken off, for areas to be those of the peak
  double carrierMass;                 // Da
  std::int32_t charge;                // 1 and more
};

// The sum of the peaks of one series. Masses are whole multiples of a step, the largest power of two that is
// not above the smallest median step of a peak, in mass; a zero stands on either side of what is not 0. Where
// that would be more than 32 768 masses, or finer than 2^-22 of the mass, the step is larger. A profile of
// less than two places, of a charge below 1, or with a point beyond 1e12 Da or 1e100 is left out. O(points +
// masses).
TSLBL_API MassCurve SumOfPeaks(std::span<const ChargedProfile> peaks);

// The sum of curves: at each mass of any of them, ascending. Areas stay. O(n log n).
TSLBL_API MassCurve SumOfCurves(std::span<const MassCurve> curves);

}  // namespace TslMath
