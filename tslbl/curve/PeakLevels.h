#pragma once
// Amplitudes and widths at and around a peak, shared by detection and its reports.

#include <tslbl/curve/Curve.h>
#include <cstdint>

namespace TslBL {

// The value of a point; 0 outside the array, since a table may come with a curve that has
// lost its arrays.
inline double ValueAt(const std::vector<double>& values, std::size_t i) {
  return i < values.size() ? values[i] : 0.0;
}

// Signal to noise of an amplitude at a fractional index, whose fraction does not count.
double SignalToNoiseAt(const Curve& curve, double idx, double amplitude);

// The full width at half maximum, in x units.
double WidthInX(const Curve& curve, const PeakInfo& peak);
// 0 for a width that is not above 0.
inline double ResolutionOf(double x, double width) { return width > 0.0 ? x / width : 0.0; }

}  // namespace TslBL
