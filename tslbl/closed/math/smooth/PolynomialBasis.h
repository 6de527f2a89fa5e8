#pragma once
// Orthonormal polynomials on the 2 half + 1 equidistant points -half .. half (Gram polynomials).
#include <cstddef>
#include <vector>

namespace TslMath {

class PolynomialBasis {
 public:
  // Degrees 0 .. order, order <= 2 half. Cost O(half * order^2).
  PolynomialBasis(std::size_t half, std::size_t order);

  // Weights, by the distance from the centre, of the least-squares fit's value at the centre.
  std::vector<double> CentreWeights() const;

  // The coefficients of the polynomial fitted to the 2 half + 1 points from y on, and its value at the k-th
  // of them.
  std::vector<double> Fit(const double* y) const;
  double Value(const std::vector<double>& coefficients, std::size_t k) const;

 private:
  // Even and odd degrees are even and odd functions, so the points 0 .. half tell all.
  const double* Row(std::size_t degree) const { return values_.data() + degree * (half_ + 1); }
  double* Row(std::size_t degree) { return values_.data() + degree * (half_ + 1); }
  double Dot(const double* a, const double* b) const;
  void RemoveLowerDegrees(std::size_t degree);

  std::size_t half_;
  std::size_t order_;
  std::vector<double> values_;
};

}  // namespace TslMath
