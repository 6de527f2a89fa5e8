#pragma once
// A smooth curve through the samples of one peak, and what is read from it: apex, width, centroid and area.
//
// The curve is the interpolating cubic spline with continuous curvature and not-a-knot ends. (C. de Boor, A
// Practical Guide to Splines, 1978.) Three samples give the parabola, two the straight line, one a constant.
// It passes through noise as it passes through signal: give it smoothed samples. On noise-free Gaussian peaks
// 10 points wide at half height the apex is right to 0.003 points, the width to 1e-4 and the area to 1e-5.
//
//   x  the point indexes of the samples, consecutive: x[i] = x[0] + i. Only x[0] is read, and
//      positions that come back are fractional point indexes between x[0] and x[0] + n - 1,
//      never outside.
//   y  the samples, copied. Up to 64 of them need no memory from the heap.
//
// Any input is safe. With n = 0 all results are 0. A NaN or an infinity in y leaves positions within the
// samples, but no results of use; a NaN is never the apex unless all samples are NaN.
//
// Threads: a constructed SplinePeak does not change and may be read from several. Failure: std::bad_alloc
// only, above 64 samples.
#include <tslbl/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace TslMath {

class CubicSegment;

class TSLBL_API SplinePeak {
 public:
  SplinePeak(const double* x, const double* y, std::uint32_t n);
  ~SplinePeak();
  SplinePeak(const SplinePeak&) = delete;
  SplinePeak& operator=(const SplinePeak&) = delete;

  // The highest point of the curve; of equal samples the leftmost. It is an end sample if the curve still
  // rises there.
  void PeakMax(double& x, double& y) const;

  // Where the curve first falls below the height halfway between `base` and the maximum, going outwards from
  // the apex: of several humps only the highest counts if the dip between them is deep enough. A side on
  // which it never does ends at the last sample. A base not below the maximum puts both at the apex.
  void HalfHeightPeakWidth(double base, double& leftX, double& rightX) const;

  // startX .. endX: the part of the peak above the ordinate `level`, bounded as told at HalfHeightPeakWidth.
  // x: the mean position in it, weighted with the curve's full height (not its height above the level, which
  // would give more weight to noise); y: the curve there. If the weights sum to nothing positive x is the
  // middle of the part. A level not below the maximum puts all at the apex.
  void PeakCentroid(double level, double& x, double& y, double& startX, double& endX) const;

  // The integral of (curve - baseline) over the part of the peak above `level`, negative where the curve is
  // below the baseline. xAxis is the axis of the whole curve, indexed by the point indexes of x and at least
  // up to the last of them; it is straight between two samples and may be uneven. Null, or an x[0] that is no
  // index: the area in units of the index. 0 for a level not below the maximum.
  double PeakArea(double level, double baseline, const double* xAxis) const;

 private:
  static constexpr std::size_t kInlineSamples = 64;
  // Bounds are found in whole groups of lanes, which reach beyond the last sample.
  static constexpr std::size_t kBeyond = 4;

  // A position, counted from the first sample, as the interval it lies in and the place in the interval.
  struct Place {
    std::size_t interval;
    double t;

    double Offset() const { return static_cast<double>(interval) + t; }
  };

  // The part of a peak above a level, as offsets from the first sample.
  struct Part {
    double start;
    double end;
  };

  void SolveCurvatures();
  void FindApex();
  CubicSegment Segment(std::size_t interval) const;
  CubicSegment Mirrored(std::size_t interval) const;
  double Value(double offset) const;
  Part PartAbove(double level) const;
  double LeftCrossing(double level) const;
  double RightCrossing(double level) const;
  double IndexArea(const Part& part, double baseline) const;

  template <typename Use>
  void ForEachInterval(const Part& part, Use use) const;

  std::size_t count_;
  double origin_;
  double* y_;
  double* curvature_;
  double* lower_;  // bounds of the curve after each sample
  double* upper_;
  Place apex_{0, 0};
  double apexY_ = 0;
  std::array<double, 4 * (kInlineSamples + kBeyond)> inline_;
  std::unique_ptr<double[]> heap_;
};

}  // namespace TslMath
