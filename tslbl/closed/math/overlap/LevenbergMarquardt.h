#pragma once
// Fits a sum of peaks by steps between those of Gauss and Newton and those of steepest descent.
// Sources: K. Levenberg, A method for the solution of certain non-linear problems in least squares, 1944;
// D. Marquardt, An algorithm for least-squares estimation of nonlinear parameters, 1963.
#include <tslbl/closed/math/overlap/Cholesky.h>
#include <tslbl/closed/math/overlap/FitTask.h>

namespace TslMath {

// Workspace of fits, which allocate nothing once one of the same size was made. Threads need one each.
class LevenbergMarquardt {
 public:
  // From `sum`, which lies within the limits, on until a step makes the squares less than `tolerance` of them
  // smaller. The squares never grow. False if there is no such end after 60 steps, or the task is spent, or
  // the numbers are too large for a double; the sum is finite nevertheless.
  // `equations` become those at the sum that it ends at.
  bool Fit(const FitTask& task, PeakSum& sum, FitEquations& equations, double tolerance);

 private:
  void KeepWhatIsAtLimits(const FitTask& task, const PeakSum& sum, const FitEquations& here);
  void Step(const TermOrder& order, const PeakSum& from, PeakSum& to) const;
  bool TakeStep(const FitTask& task, const PeakSum& sum, const FitEquations& here);

  FitEquations there_;
  Cholesky factor_;
  std::vector<char> kept_;
  std::vector<double> step_;
  PeakSum trial_;
  double damping_ = 0.0;
};

}  // namespace TslMath
