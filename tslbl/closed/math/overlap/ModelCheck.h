#pragma once
// Finds peaks of a group that show no bend of their own: a sum of Gaussians of one width is fitted, and where
// it cannot follow the points, with one peak more.
#include <tslbl/closed/math/overlap/GroupNoise.h>
#include <tslbl/closed/math/overlap/LevenbergMarquardt.h>
#include <tslbl/closed/math/overlap/PeakHeights.h>

#include <span>
#include <vector>

namespace TslMath {

class ModelCheck {
 public:
  // `width` is the likely standard deviation of a peak in points. The
  // points must be usable for GroupSamples.
  ModelCheck(std::span<const double> y, const GroupNoise& noise, double width);

  // Centres in points, ascending: those given, which are refined, and up to four more. A large group may get
  // fewer, since the work is limited to some tenths of a second.
  std::vector<double> AddMissing(const std::vector<double>& centres);

 private:
  struct Attempt {
    PeakSum sum;
    double squares;
  };

  Attempt Fit(std::vector<double> centres, double width, double reach, double tolerance);
  std::vector<double> SplitAt(const PeakSum& sum, std::size_t peak) const;
  void FindResiduals(const PeakSum& sum);
  double LargestResidual(double width) const;
  double MisfitNear(double top, double width) const;
  std::vector<std::size_t> PeaksToSplit(const PeakSum& sum) const;
  static std::ptrdiff_t LowPeaks(const PeakSum& sum);
  bool IsPlausible(const PeakSum& sum, const PeakSum& before) const;
  bool AddOne(Attempt& best);
  bool IsSpent() const;

  GroupSamples samples_;
  double variancePerMean_;
  double width_;
  EquationBuilder builder_;
  LevenbergMarquardt fit_;
  FitEquations equations_;
  PeakHeights heights_;
  std::vector<double> residuals_;
  double enough_;
};

}  // namespace TslMath
