#pragma once
// How well the data determine a peak: standard errors of its place, its height and its area.
//
// Delta method: how far each of the three moves with each point as it was measured, times the variance of
// that point. What a filter did to the points is followed back through its weights. Between points the curve
// is a cubic spline, of which the few nearest points count. The baseline is taken
// for exact.
//
// Source: W. T. Eadie et al., Statistical Methods in Experimental Physics, 1971 (propagation of errors).
//
// Accuracy: tests/curve/PeakErrorsTest.cpp holds (measured - true) / standard error of simulated lines
// against 1.

#include <tslbl/Export.h>
#include <cstdint>
#include <span>
#include <vector>

namespace TslBL {

class Curve;
struct PeakInfo;
struct SplineDependence;

// Standard errors; NaN where the row has no limits on the curve, that of the place also where it has no
// height.
struct PeakErrors {
  double x;     // of the reported place, in units of the x axis
  double ampl;  // of the amplitude there
  double area;  // of QWholePeakArea
};

// For the data peaks of one evaluated curve. Not for use by two threads at once; the curve and the spans must
// outlive it.
class TSLBL_API PeakErrorEstimator {
 public:
  // `variance` of each point before it was smoothed, as many as the curve has; `filter` as QFilterWeights
  // gives it, {1} without smoothing. Throws std::invalid_argument if the number of its weights is not odd, as
  // where QFilterWeights knows none.
  PeakErrorEstimator(const Curve& curve, std::span<const double> variance, std::span<const double> filter);

  // Throws std::out_of_range if peakIdx is no row of the table.
  PeakErrors Of(std::uint32_t peakIdx);

 private:
  double AreaError(const PeakInfo& peak) const;
  void Begin(double from, double to);
  void Add(const SplineDependence& on, double factor);
  void AddCentroid(const PeakInfo& peak);
  void AddTop(const PeakInfo& peak);
  double StandardError();

  const Curve& curve_;
  std::span<const double> variance_;
  std::span<const double> filter_;
  std::size_t first_ = 0;            // point of the first of these
  std::vector<double> sensitivity_;  // of the figure in hand to points of the curve
  std::vector<double> measured_;     // the same to points as they were measured
};

}  // namespace TslBL
