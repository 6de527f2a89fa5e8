#pragma once
// A curve averaged into cells and continued beyond its ends, as the openings of a baseline see it.
#include <tslbl/closed/math/baseline/AcceptedSums.h>

#include <cstddef>
#include <vector>

namespace TslMath {

// Points averaged into one cell. Less than half a peak's width, so valleys between peaks stay while single
// counts make none, and everything done in cells costs a fifth.
constexpr std::size_t kCellSize = 5;

// Cells of a curve of n points, the same remainder being left out at both ends, with `margin` further cells
// on either side; at least 2.
class CellCurve {
 public:
  // The curve's own cells are means of y; one that is not finite repeats its neighbour. The margins are zero.
  CellCurve(const double* y, std::size_t n, std::size_t margin);

  std::size_t Margin() const { return margin_; }
  std::size_t InnerSize() const { return cells_.size() - 2 * margin_; }
  const std::vector<double>& Cells() const { return cells_; }
  // The curve's own cells.
  const double* Inner() const { return cells_.data() + margin_; }

  // Fills the margins along lines over points; their t counts from `leftOrigin` and `rightOrigin`. A
  // line that is not finite counts as level.
  void Continue(const SegmentLine& left, double leftOrigin, const SegmentLine& right, double rightOrigin);

  // out[i], i < n: cells (as many as there are here, margins included) joined by straight lines.
  void DrawPoints(const std::vector<double>& cells, std::size_t n, double* out) const;

 private:
  double Centre(std::size_t cell) const;  // on the scale of points

  std::size_t margin_;
  std::size_t firstPoint_;
  std::vector<double> cells_;
};

}  // namespace TslMath
