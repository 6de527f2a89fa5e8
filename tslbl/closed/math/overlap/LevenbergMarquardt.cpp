#include <tslbl/closed/math/overlap/LevenbergMarquardt.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TslMath {
namespace {

constexpr int kMostSteps = 60;
constexpr int kMostDampings = 12;  // of one step
constexpr double kFirstDamping = 1e-3;
constexpr double kLeastDamping = 1e-12;
constexpr double kLessDamping = 0.1;
constexpr double kMoreDamping = 8.0;

bool PointsOutward(double value, double least, double most, double slope) {
  return (value <= least && slope <= 0.0) || (value >= most && slope >= 0.0);
}

}  // namespace

// A number at its limit takes no part in a step that would lead beyond, nor one that changes nothing.
void LevenbergMarquardt::KeepWhatIsAtLimits(const FitTask& task, const PeakSum& sum,
                                            const FitEquations& here) {
  const TermOrder& order = task.Order();
  const FitLimits& limits = task.Limits();
  const auto keep = [&](std::size_t term, double value, double least, double most) {
    kept_[term] = PointsOutward(value, least, most, here.slope[term]);
  };
  for (std::size_t k = 0; k < order.Peaks(); ++k) {
    keep(order.Height(k), sum.heights[k], 0.0, HUGE_VAL);
    if (order.Free().places)
      keep(order.Top(k), sum.tops[k], limits.tops[k] - limits.reach, limits.tops[k] + limits.reach);
  }
  for (std::size_t k = 0; k < order.WidthCount(); ++k)
    keep(order.Width(k), sum.widths[k], limits.leastWidth, limits.greatestWidth);
  if (order.Free().skew) keep(order.Skew(), sum.skew, -limits.greatestSkew, limits.greatestSkew);
  if (order.Free().baseline) kept_[order.Baseline()] = false;
  for (std::size_t i = 0; i < kept_.size(); ++i)
    if (here.matrix[i * kept_.size() + i] == 0.0) kept_[i] = true;
}

void LevenbergMarquardt::Step(const TermOrder& order, const PeakSum& from, PeakSum& to) const {
  to = from;
  for (std::size_t k = 0; k < order.Peaks(); ++k) {
    to.heights[k] += step_[order.Height(k)];
    if (order.Free().places) to.tops[k] += step_[order.Top(k)];
    if (order.WidthCount() > 0) to.widths[k] += step_[order.Width(k)];
  }
  if (order.Free().skew) to.skew += step_[order.Skew()];
  if (order.Free().baseline) to.baseline += step_[order.Baseline()];
}

// The first step that leads no higher, with more and more damping. False if there is none.
bool LevenbergMarquardt::TakeStep(const FitTask& task, const PeakSum& sum, const FitEquations& here) {
  KeepWhatIsAtLimits(task, sum, here);
  for (int trial = 0; trial < kMostDampings; ++trial, damping_ *= kMoreDamping) {
    step_ = here.slope;
    task.Builder().CountSolution(kept_.size());
    if (!factor_.Factor(here.matrix, kept_, 1.0 + damping_)) continue;
    factor_.Solve(step_);
    if (!std::ranges::all_of(step_, [](double change) { return std::isfinite(change); })) continue;
    Step(task.Order(), sum, trial_);
    task.Limits().Apply(trial_);
    task.Build(trial_, there_);
    if (there_.squares <= here.squares) return true;
  }
  return false;
}

bool LevenbergMarquardt::Fit(const FitTask& task, PeakSum& sum, FitEquations& equations, double tolerance) {
  damping_ = kFirstDamping;
  kept_.assign(task.Order().Count(), false);
  task.Build(sum, equations);
  for (int step = 0; step < kMostSteps && std::isfinite(equations.squares) && !task.IsSpent(); ++step) {
    if (!TakeStep(task, sum, equations)) return true;
    const double fall = equations.squares - there_.squares;
    std::swap(sum, trial_);
    std::swap(equations, there_);
    damping_ = std::max(damping_ * kLessDamping, kLeastDamping);
    if (fall <= tolerance * equations.squares) return true;
  }
  // What is left after so many steps tells how good it is; it is better than no answer.
  return std::isfinite(equations.squares) && !task.IsSpent();
}

}  // namespace TslMath
