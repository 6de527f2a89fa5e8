#pragma once
// The normal equations of a weighted least-squares fit of a sum of peaks: how the sum of squares changes with
// the free numbers of the sum.
#include <tslbl/closed/math/overlap/GroupSamples.h>
#include <tslbl/closed/math/overlap/PeakSum.h>
#include <tslbl/closed/math/overlap/TermOrder.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TslMath {

// J being the derivatives of the sum by its free numbers, r the deviations of the points from it, both times
// the root of the weight.
struct FitEquations {
  double squares = 0.0;        // r'r
  std::vector<double> slope;   // J'r
  std::vector<double> matrix;  // J'J, row by row; the lower triangle is set

  void Clear(std::size_t terms) {
    squares = 0.0;
    slope.assign(terms, 0.0);
    matrix.assign(terms * terms, 0.0);
  }
};

// Sets up equations again and again with no further allocation, over samples that must outlive it. Threads
// need one each.
class EquationBuilder {
 public:
  EquationBuilder(const GroupSamples& samples, std::size_t peaks);

  // A peak has no part in blocks whose points are all farther from it than 8 widths.
  void Build(const PeakSum& sum, const TermOrder& order, FitEquations& equations);

  // The values of the sum at the points.
  void Evaluate(const PeakSum& sum, std::vector<double>& values);

  // What all this has cost so far: about the number of multiplications.
  std::uint64_t Effort() const { return effort_; }
  // The equations of so many terms were solved.
  void CountSolution(std::size_t terms) { effort_ += terms * terms * terms / 6; }

 private:
  void Start(const PeakSum& sum, std::size_t block);
  void ListTerms(const TermOrder& order, const TermOrder& here);
  void FillColumns(const PeakSum& sum, std::size_t block, const TermOrder& here);
  double* Column(std::size_t term) { return columns_.data() + term * kGroupBlock; }

  const GroupSamples& samples_;
  std::vector<std::size_t> near_;  // peaks that have a part in the block
  std::vector<std::size_t> terms_;
  std::vector<double> columns_;
  std::vector<double> residuals_;
  std::uint64_t effort_ = 0;
};

}  // namespace TslMath
