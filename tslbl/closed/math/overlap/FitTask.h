#pragma once
// What a fit of overlapped peaks makes as small as it can, and within which limits: both methods, that of
// Levenberg and Marquardt and that of Hooke and Jeeves, work on the same task.
#include <tslbl/closed/math/overlap/FitEquations.h>
#include <tslbl/closed/math/overlap/PeakSum.h>

#include <cstdint>
#include <vector>

namespace TslMath {

// Tops stay within `reach` of where they started; heights are not below 0.
struct FitLimits {
  std::vector<double> tops;
  double reach = 0.0;
  double startWidth = 0.0;
  double leastWidth = 0.0;
  double greatestWidth = 0.0;
  double greatestSkew = 0.4;

  void Apply(PeakSum& sum) const;
};

// What keeps widths together where each peak has its own: `strength` times the sum of the squared deviations
// from their mean counts as squares of the fit.
struct WidthTie {
  double strength = 0.0;
};

class FitTask {
 public:
  FitTask(EquationBuilder& builder, const FitLimits& limits, const TermOrder& order, WidthTie tie = {})
      : builder_(builder), limits_(limits), order_(order), tie_(tie) {}

  const TermOrder& Order() const { return order_; }
  const FitLimits& Limits() const { return limits_; }
  const WidthTie& Tie() const { return tie_; }
  EquationBuilder& Builder() const { return builder_; }

  // Deviations of points and of widths.
  void Build(const PeakSum& sum, FitEquations& equations) const;
  double SquaresOfTie(const PeakSum& sum) const;

  // A task that is too large for an answer in a few seconds is given up.
  bool IsSpent() const { return builder_.Effort() > kMostEffort; }

 private:
  static constexpr std::uint64_t kMostEffort = 2'000'000'000;

  void AddTie(const PeakSum& sum, FitEquations& equations) const;

  EquationBuilder& builder_;
  const FitLimits& limits_;
  TermOrder order_;
  WidthTie tie_;
};

}  // namespace TslMath
