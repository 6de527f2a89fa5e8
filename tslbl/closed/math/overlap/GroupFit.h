#pragma once
// The stages of the fit of one group: start, common width, what the points ask for beyond that, errors.
#include <tslbl/closed/math/overlap/FitErrors.h>
#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <tslbl/closed/math/overlap/HookeJeeves.h>
#include <tslbl/closed/math/overlap/LevenbergMarquardt.h>

#include <vector>

namespace TslMath {

class GroupFit {
 public:
  // Of a group that `FitOverlap` accepts.
  GroupFit(FitMethod method, const OverlapGroup& group);

  std::optional<OverlapFit> Run();

 private:
  // When a fit is done: by the last fall of the squares, of them; by the last steps, of the first.
  struct Precision {
    double squares;
    double steps;
  };
  static constexpr Precision kCoarse{1e-2, 0.1};
  static constexpr Precision kFine{1e-7, 5e-4};

  PeakSum StartSum(double widthFactor) const;
  void FindStartWidth();
  bool HasLostPeak() const;
  bool IsDoubtful() const;
  bool HasTopAtLimit() const;
  void TryOtherStarts();
  bool Fit(const FreeTerms& free, Precision precision);
  void WeighByFit();
  bool FitAgain();
  bool FitCommonWidth();
  double FreedomOf(const FreeTerms& free) const;
  double GainBy(const FreeTerms& free);
  bool TakeInWhatIsAskedFor();
  double NoiseOfPoint() const;
  double Noise();
  OverlapFit Scaled(const std::vector<FitError>& errors) const;

  FitMethod method_;
  GroupSamples samples_;
  bool isNoiseKnown_;
  double variancePerMean_;
  EquationBuilder builder_;
  FitLimits limits_;
  PeakSum sum_;
  FreeTerms free_;
  WidthTie tie_;
  LevenbergMarquardt levenbergMarquardt_;
  HookeJeeves hookeJeeves_;
  PeakHeights heights_;
  FitEquations equations_;
  std::vector<double> values_;
};

}  // namespace TslMath
