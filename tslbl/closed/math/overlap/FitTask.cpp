#include <tslbl/closed/math/overlap/FitTask.h>

#include <algorithm>
#include <numeric>

namespace TslMath {
namespace {

double MeanWidth(const PeakSum& sum) {
  return std::accumulate(sum.widths.begin(), sum.widths.end(), 0.0) / static_cast<double>(sum.Count());
}

}  // namespace

void FitLimits::Apply(PeakSum& sum) const {
  for (std::size_t k = 0; k < sum.Count(); ++k) {
    sum.heights[k] = std::max(sum.heights[k], 0.0);
    sum.tops[k] = std::clamp(sum.tops[k], tops[k] - reach, tops[k] + reach);
    sum.widths[k] = std::clamp(sum.widths[k], leastWidth, greatestWidth);
  }
  sum.skew = std::clamp(sum.skew, -greatestSkew, greatestSkew);
}

void FitTask::Build(const PeakSum& sum, FitEquations& equations) const {
  builder_.Build(sum, order_, equations);
  if (order_.HasOwnWidths()) AddTie(sum, equations);
}

double FitTask::SquaresOfTie(const PeakSum& sum) const {
  if (!order_.HasOwnWidths()) return 0.0;
  const double mean = MeanWidth(sum);
  double squares = 0.0;
  for (const double width : sum.widths) squares += (width - mean) * (width - mean);
  return tie_.strength * squares;
}

void FitTask::AddTie(const PeakSum& sum, FitEquations& equations) const {
  const double mean = MeanWidth(sum);
  const double share = 1.0 / static_cast<double>(sum.Count());
  equations.squares += SquaresOfTie(sum);
  for (std::size_t k = 0; k < sum.Count(); ++k) {
    equations.slope[order_.Width(k)] -= tie_.strength * (sum.widths[k] - mean);
    double* row = equations.matrix.data() + order_.Width(k) * order_.Count();
    for (std::size_t j = 0; j <= k; ++j)
      row[order_.Width(j)] += tie_.strength * ((j == k ? 1.0 : 0.0) - share);
  }
}

}  // namespace TslMath
