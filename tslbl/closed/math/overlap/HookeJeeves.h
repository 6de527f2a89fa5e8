#pragma once
// Fits a sum of peaks without derivatives: a search along places, widths and skew, for each of which the best
// heights and baseline are solved for.
// Sources: R. Hooke, T. Jeeves, "Direct search" solution of numerical and statistical problems, 1961;
// G. Golub, V. Pereyra, The differentiation of pseudo-inverses and nonlinear least squares problems whose
// variables separate, 1973.
#include <tslbl/closed/math/overlap/FitTask.h>
#include <tslbl/closed/math/overlap/PeakHeights.h>

namespace TslMath {

// Workspace of fits, which allocate nothing once one of the same size was made. Threads need one each.
class HookeJeeves {
 public:
  // From `sum` on until steps are less than `precision` of the first, which are a quarter of the width and a
  // tenth for the others. False if there is no such end after 8000 trials, or the task is spent.
  bool Fit(const FitTask& task, PeakSum& sum, double precision);

 private:
  double Squares(const FitTask& task, PeakSum& sum);
  bool HasTrialsLeft(const FitTask& task) const;
  void Explore(const FitTask& task, double step, PeakSum& sum, double& squares);

  PeakHeights heights_;
  PeakSum trial_;
  PeakSum next_;
  PeakSum leap_;
  double usualWidth_ = 0.0;
  int trials_ = 0;
};

}  // namespace TslMath
