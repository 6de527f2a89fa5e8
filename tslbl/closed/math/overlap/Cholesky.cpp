#include <tslbl/closed/math/overlap/Cholesky.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

// Of an element of the diagonal, what is left of it when others are taken off: less is rounding.
constexpr double kLeastRest = 1e-13;

}  // namespace

bool Cholesky::Factor(std::span<const double> matrix, std::span<const char> kept, double damping) {
  size_ = kept.size();
  rows_.assign(matrix.begin(), matrix.end());
  kept_.assign(kept.begin(), kept.end());
  for (std::size_t i = 0; i < size_; ++i) {
    double* row = rows_.data() + i * size_;
    for (std::size_t j = 0; j < i; ++j) {
      const double* other = rows_.data() + j * size_;
      double rest = kept[i] || kept[j] ? 0.0 : row[j];
      for (std::size_t k = 0; k < j; ++k) rest -= row[k] * other[k];
      row[j] = rest / other[j];
    }
    const double whole = kept[i] ? 1.0 : row[i] * damping;
    double rest = whole;
    for (std::size_t k = 0; k < i; ++k) rest -= row[k] * row[k];
    if (!(rest > kLeastRest * whole) || !std::isfinite(rest)) return false;
    row[i] = std::sqrt(rest);
  }
  return true;
}

void Cholesky::SolveLower(std::span<double> b) const {
  for (std::size_t i = 0; i < size_; ++i) {
    const double* row = rows_.data() + i * size_;
    double rest = kept_[i] ? 0.0 : b[i];
    for (std::size_t k = 0; k < i; ++k) rest -= row[k] * b[k];
    b[i] = rest / row[i];
  }
}

void Cholesky::Solve(std::span<double> b) const {
  SolveLower(b);
  for (std::size_t i = size_; i-- > 0;) {
    const double* row = rows_.data() + i * size_;
    b[i] /= row[i];
    for (std::size_t k = 0; k < i; ++k) b[k] -= row[k] * b[i];
  }
}

double Cholesky::Variance(std::span<double> b) const {
  SolveLower(b);
  double sum = 0.0;
  for (const double value : b) sum += value * value;
  return sum;
}

}  // namespace TslMath
