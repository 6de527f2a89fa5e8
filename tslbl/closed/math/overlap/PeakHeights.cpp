#include <tslbl/closed/math/overlap/PeakHeights.h>

#include <algorithm>
#include <numeric>

namespace TslMath {

bool PeakHeights::Solve(EquationBuilder& builder) {
  builder.CountSolution(kept_.size());
  solution_ = equations_.slope;
  if (!factor_.Factor(equations_.matrix, kept_)) return false;
  factor_.Solve(solution_);
  return true;
}

bool PeakHeights::DropLowest(std::size_t peaks) {
  const auto lowest =
      std::min_element(solution_.begin(), solution_.begin() + static_cast<std::ptrdiff_t>(peaks));
  if (*lowest >= 0.0) return false;
  kept_[static_cast<std::size_t>(lowest - solution_.begin())] = true;
  return true;
}

double PeakHeights::Fit(EquationBuilder& builder, bool freeBaseline, PeakSum& sum) {
  const TermOrder order(sum.Count(), {false, FreeTerms::Widths::Kept, false, freeBaseline});
  std::ranges::fill(sum.heights, 0.0);
  if (freeBaseline) sum.baseline = 0.0;
  equations_.Clear(order.Count());
  builder.Build(sum, order, equations_);
  kept_.assign(order.Count(), false);
  for (std::size_t i = 0; i < kept_.size(); ++i) kept_[i] = equations_.matrix[i * kept_.size() + i] == 0.0;
  do {
    // Peaks in one place: without the last of them the others can be told.
    for (std::size_t k = sum.Count(); !Solve(builder); kept_[--k] = true)
      if (k == 0) return equations_.squares;
  } while (DropLowest(sum.Count()));
  std::copy_n(solution_.begin(), sum.Count(), sum.heights.begin());
  if (freeBaseline) sum.baseline = solution_[order.Baseline()];
  return equations_.squares -
         std::inner_product(solution_.begin(), solution_.end(), equations_.slope.begin(), 0.0);
}

}  // namespace TslMath
