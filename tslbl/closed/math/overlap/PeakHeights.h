#pragma once
// The heights and the baseline that fit best where places and widths are given: a linear problem.
#include <tslbl/closed/math/overlap/Cholesky.h>
#include <tslbl/closed/math/overlap/FitEquations.h>

namespace TslMath {

// Workspace, which allocates nothing once one of the same size was solved. Threads need one each.
class PeakHeights {
 public:
  // Sets heights, none of them below 0, and the baseline if `freeBaseline`, and returns the sum of the
  // weighted squares that is left. Peaks that are not needed, and of two in the same place one, get the
  // height 0. Source: C. Lawson, R. Hanson, Solving least squares problems, 1974.
  double Fit(EquationBuilder& builder, bool freeBaseline, PeakSum& sum);

 private:
  bool Solve(EquationBuilder& builder);
  bool DropLowest(std::size_t peaks);

  FitEquations equations_;
  Cholesky factor_;
  std::vector<char> kept_;
  std::vector<double> solution_;
};

}  // namespace TslMath
