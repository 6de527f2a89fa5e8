#pragma once
// Solves small systems of equations with a symmetric matrix that has only positive eigenvalues.
#include <cstddef>
#include <span>
#include <vector>

namespace TslMath {

// The matrix M = L L', L being a lower triangle. A factor can be taken again and again; it allocates only
// when a matrix is larger than all before.
class Cholesky {
 public:
  // Of the matrix, which stands row by row and of which the lower triangle is read, with each element of the
  // diagonal times `damping`. Terms that are `kept` are passed over: a solution has 0 there. False if the
  // matrix has an eigenvalue that is 0, below, or as small against the others as rounding.
  bool Factor(std::span<const double> matrix, std::span<const char> kept, double damping = 1.0);

  // b becomes the solution of M x = b.
  void Solve(std::span<double> b) const;

  // b'(M^-1)b, which is the variance of b'x if M^-1 is the covariance of x. b is overwritten.
  double Variance(std::span<double> b) const;

 private:
  void SolveLower(std::span<double> b) const;

  std::size_t size_ = 0;
  std::vector<double> rows_;
  std::vector<char> kept_;
};

}  // namespace TslMath
