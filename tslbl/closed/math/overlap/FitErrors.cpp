#include <tslbl/closed/math/overlap/FitErrors.h>

#include <cmath>
#include <numbers>

namespace TslMath {
namespace {

// In standard deviations of the correlation of independent residuals.
constexpr double kCorrelated = 2.5;

double CorrelationAt(std::span<const double> residuals, std::size_t lag) {
  double sum = 0.0;
  for (std::size_t i = lag; i < residuals.size(); ++i) sum += residuals[i] * residuals[i - lag];
  return sum;
}

}  // namespace

std::vector<char> UndeterminedTerms(const PeakSum& sum, const TermOrder& order) {
  std::vector<char> kept(order.Count(), false);
  for (std::size_t k = 0; k < sum.Count(); ++k) {
    if (sum.heights[k] > 0.0) continue;
    kept[order.Height(k)] = true;
    kept[order.Top(k)] = true;
    if (order.HasOwnWidths()) kept[order.Width(k)] = true;
  }
  return kept;
}

std::vector<FitError> ErrorsOf(const PeakSum& sum, const TermOrder& order, const FitEquations& equations,
                               double noise) {
  Cholesky factor;
  if (!factor.Factor(equations.matrix, UndeterminedTerms(sum, order))) return {};
  const double rootTwoPi = std::sqrt(2.0 * std::numbers::pi);
  std::vector<double> slope(order.Count());
  std::vector<FitError> errors;
  for (std::size_t k = 0; k < sum.Count(); ++k) {
    slope.assign(order.Count(), 0.0);
    slope[order.Top(k)] = 1.0;
    slope[order.Width(k)] = PeakSum::kShiftPerSkew * sum.skew;
    if (order.Free().skew) slope[order.Skew()] = PeakSum::kShiftPerSkew * sum.widths[k];
    const double ofCentroid = factor.Variance(slope);
    slope.assign(order.Count(), 0.0);
    slope[order.Height(k)] = rootTwoPi * sum.widths[k];
    slope[order.Width(k)] = rootTwoPi * sum.heights[k];
    const double ofArea = factor.Variance(slope);
    errors.push_back({std::sqrt(noise * ofCentroid), std::sqrt(noise * ofArea)});
  }
  return errors;
}

double CorrelationFactor(std::span<const double> residuals) {
  const double whole = CorrelationAt(residuals, 0);
  const double least = kCorrelated / std::sqrt(static_cast<double>(residuals.size())) * whole;
  if (!(CorrelationAt(residuals, 1) > least)) return 1.0;
  double factor = 1.0;
  for (std::size_t lag = 1; lag < residuals.size(); ++lag) {
    const double correlation = CorrelationAt(residuals, lag) / whole;
    if (!(correlation > 0.0)) break;
    factor += 2.0 * correlation;
  }
  return factor;
}

}  // namespace TslMath
