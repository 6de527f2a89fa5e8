#include <tslbl/closed/math/overlap/HookeJeeves.h>

#include <cmath>
#include <utility>

namespace TslMath {
namespace {

constexpr int kMostTrials = 8000;
constexpr double kTopStep = 0.25;   // widths
constexpr double kOtherStep = 0.1;  // of a width, and of the skew
constexpr double kLeastGain = 1e-12;

bool IsLess(double squares, double than) { return squares < than * (1.0 - kLeastGain); }

std::size_t CoordinateCount(const TermOrder& order) {
  return order.Peaks() + order.WidthCount() + (order.Free().skew ? 1 : 0);
}

// Moves one coordinate: tops and skew by adding, widths by a factor, since they are above 0.
void Move(const TermOrder& order, std::size_t index, double step, double usualWidth, PeakSum& sum) {
  const std::size_t peaks = order.Peaks();
  if (index < peaks) {
    sum.tops[index] += kTopStep * step * usualWidth;
  } else if (index == peaks + order.WidthCount()) {
    sum.skew += kOtherStep * step;
  } else if (order.HasOwnWidths()) {
    sum.widths[index - peaks] *= std::exp(kOtherStep * step);
  } else {
    for (double& width : sum.widths) width *= std::exp(kOtherStep * step);
  }
}

bool IsWithin(const FitLimits& limits, const PeakSum& sum) {
  for (std::size_t k = 0; k < sum.Count(); ++k) {
    if (std::abs(sum.tops[k] - limits.tops[k]) > limits.reach) return false;
    if (sum.widths[k] < limits.leastWidth || sum.widths[k] > limits.greatestWidth) return false;
  }
  return std::abs(sum.skew) <= limits.greatestSkew;
}

// As far beyond `over` as that is from `from`.
void Leap(const PeakSum& from, const PeakSum& over, PeakSum& to) {
  to = over;
  for (std::size_t k = 0; k < to.Count(); ++k) {
    to.tops[k] += over.tops[k] - from.tops[k];
    to.widths[k] *= over.widths[k] / from.widths[k];
  }
  to.skew += over.skew - from.skew;
}

}  // namespace

double HookeJeeves::Squares(const FitTask& task, PeakSum& sum) {
  if (!IsWithin(task.Limits(), sum)) return HUGE_VAL;
  ++trials_;
  return heights_.Fit(task.Builder(), task.Order().Free().baseline, sum) + task.SquaresOfTie(sum);
}

bool HookeJeeves::HasTrialsLeft(const FitTask& task) const {
  return trials_ < kMostTrials && !task.IsSpent();
}

// Along each coordinate a step in one direction, or else in the other, where it leads lower.
void HookeJeeves::Explore(const FitTask& task, double step, PeakSum& sum, double& squares) {
  for (std::size_t index = 0; index < CoordinateCount(task.Order()) && HasTrialsLeft(task); ++index) {
    for (const double direction : {1.0, -1.0}) {
      trial_ = sum;
      Move(task.Order(), index, direction * step, usualWidth_, trial_);
      const double found = Squares(task, trial_);
      if (!(found < squares)) continue;
      std::swap(sum, trial_);
      squares = found;
      break;
    }
  }
}

bool HookeJeeves::Fit(const FitTask& task, PeakSum& sum, double precision) {
  usualWidth_ = sum.widths[0];
  trials_ = 0;
  double squares = Squares(task, sum);
  for (double step = 1.0; step > precision; step *= 0.5) {
    for (bool falls = true; falls;) {
      if (!HasTrialsLeft(task)) return std::isfinite(squares) && !task.IsSpent();
      next_ = sum;
      double found = squares;
      Explore(task, step, next_, found);
      falls = IsLess(found, squares);
      while (IsLess(found, squares) && HasTrialsLeft(task)) {
        Leap(sum, next_, leap_);
        std::swap(sum, next_);
        squares = found;
        found = Squares(task, leap_);
        Explore(task, step, leap_, found);
        std::swap(next_, leap_);
      }
    }
  }
  return std::isfinite(squares);
}

}  // namespace TslMath
