#include <tslbl/closed/math/baseline/CellCurve.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

// Puts the nearest cell before it, at the start the first one, in place of each that is not finite.
void BridgeNotFinite(double* cells, std::size_t count) {
  const auto isFinite = [](double value) { return std::isfinite(value); };
  const double* first = std::find_if(cells, cells + count, isFinite);
  double last = first == cells + count ? 0 : *first;
  for (std::size_t c = 0; c < count; ++c) {
    if (std::isfinite(cells[c])) last = cells[c];
    cells[c] = last;
  }
}

SegmentLine OrFlat(const SegmentLine& line, double level) {
  return std::isfinite(line.level) && std::isfinite(line.slope) ? line : SegmentLine{level, 0};
}

}  // namespace

CellCurve::CellCurve(const double* y, std::size_t n, std::size_t margin)
    : margin_(margin), firstPoint_(n % kCellSize / 2), cells_(n / kCellSize + 2 * margin) {
  double* inner = cells_.data() + margin;
  const double* point = y + firstPoint_;
  for (std::size_t c = 0; c < n / kCellSize; ++c, point += kCellSize) {
    double sum = 0;
    for (std::size_t k = 0; k < kCellSize; ++k) sum += point[k];
    inner[c] = sum / static_cast<double>(kCellSize);
  }
  BridgeNotFinite(inner, n / kCellSize);
}

double CellCurve::Centre(std::size_t cell) const {
  const double inner = static_cast<double>(cell) - static_cast<double>(margin_);
  return static_cast<double>(firstPoint_) + inner * kCellSize + 0.5 * (kCellSize - 1);
}

void CellCurve::Continue(const SegmentLine& left, double leftOrigin, const SegmentLine& right,
                         double rightOrigin) {
  const std::size_t end = cells_.size() - margin_;
  const SegmentLine before = OrFlat(left, InnerSize() == 0 ? 0 : cells_[margin_]);
  const SegmentLine after = OrFlat(right, InnerSize() == 0 ? 0 : cells_[end - 1]);
  for (std::size_t c = 0; c < margin_; ++c) cells_[c] = before.At(Centre(c) - leftOrigin);
  for (std::size_t c = end; c < cells_.size(); ++c) cells_[c] = after.At(Centre(c) - rightOrigin);
}

void CellCurve::DrawPoints(const std::vector<double>& cells, std::size_t n, double* out) const {
  const double* cell = cells.data() + margin_ - 1;
  const auto draw = [&](std::size_t first, std::size_t last, double* to) {
    const double slope = (cell[1] - cell[0]) / static_cast<double>(kCellSize);
    for (std::size_t phase = first; phase < last; ++phase)
      *to++ = cell[0] + slope * static_cast<double>(phase);
  };
  const std::size_t phase = kCellSize - kCellSize / 2 - firstPoint_;
  std::size_t i = std::min(n, kCellSize - phase);
  draw(phase, phase + i, out);
  for (++cell; i + kCellSize <= n; i += kCellSize, ++cell) draw(0, kCellSize, out + i);
  if (i < n) draw(0, n - i, out + i);
}

}  // namespace TslMath
