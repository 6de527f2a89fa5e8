#include <tslbl/closed/math/smooth/PolynomialBasis.h>

#include <cmath>

namespace TslMath {

// The next degree is the last one times x, made orthogonal to all before it. Orthogonality to the last two
// would do in exact arithmetic; in doubles the error then grows without limit towards the ends above a degree
// of about twice the square root of the number of points.
PolynomialBasis::PolynomialBasis(std::size_t half, std::size_t order)
    : half_(half), order_(order), values_((order + 1) * (half + 1)) {
  for (std::size_t degree = 0; degree <= order; ++degree) {
    double* row = Row(degree);
    for (std::size_t i = 0; i <= half; ++i) {
      const double x = static_cast<double>(i) / static_cast<double>(half);
      row[i] = degree == 0 ? 1.0 : x * Row(degree - 1)[i];
    }
    RemoveLowerDegrees(degree);
    RemoveLowerDegrees(degree);
    const double norm = std::sqrt(Dot(row, row));
    for (std::size_t i = 0; i <= half; ++i) row[i] /= norm;
  }
}

// The sum over -half .. half of a product of two functions of one parity.
double PolynomialBasis::Dot(const double* a, const double* b) const {
  double sum = 0;
  for (std::size_t i = 1; i <= half_; ++i) sum += a[i] * b[i];
  return a[0] * b[0] + 2 * sum;
}

void PolynomialBasis::RemoveLowerDegrees(std::size_t degree) {
  double* row = Row(degree);
  for (std::size_t lower = degree % 2; lower < degree; lower += 2) {
    const double* other = Row(lower);
    const double part = Dot(row, other);
    for (std::size_t i = 0; i <= half_; ++i) row[i] -= part * other[i];
  }
}

std::vector<double> PolynomialBasis::CentreWeights() const {
  std::vector<double> weight(half_ + 1);
  for (std::size_t degree = 0; degree <= order_; degree += 2) {
    const double* row = Row(degree);
    for (std::size_t i = 0; i <= half_; ++i) weight[i] += row[0] * row[i];
  }
  return weight;
}

std::vector<double> PolynomialBasis::Fit(const double* y) const {
  const double* centre = y + half_;
  std::vector<double> coefficients(order_ + 1);
  for (std::size_t degree = 0; degree <= order_; ++degree) {
    const double* row = Row(degree);
    double sum = row[0] * centre[0];
    for (std::size_t i = 1; i <= half_; ++i) {
      const double left = *(centre - i);
      sum += row[i] * (degree % 2 == 0 ? centre[i] + left : centre[i] - left);
    }
    coefficients[degree] = sum;
  }
  return coefficients;
}

double PolynomialBasis::Value(const std::vector<double>& coefficients, std::size_t k) const {
  const bool left = k < half_;
  const std::size_t i = left ? half_ - k : k - half_;
  double even = 0;
  double odd = 0;
  for (std::size_t degree = 0; degree <= order_; degree += 2) even += coefficients[degree] * Row(degree)[i];
  for (std::size_t degree = 1; degree <= order_; degree += 2) odd += coefficients[degree] * Row(degree)[i];
  return left ? even - odd : even + odd;
}

}  // namespace TslMath
