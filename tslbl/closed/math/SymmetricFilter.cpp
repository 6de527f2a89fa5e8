#include <tslbl/closed/math/SymmetricFilter.h>

#include <tslbl/closed/math/Lanes.h>

namespace TslMath {
namespace {

// Outputs summed side by side: enough to keep the adders busy, few enough to stay in registers.
constexpr std::size_t TileLanes = 4;
constexpr std::size_t TileSize = TileLanes * LaneCount;

// Outputs first .. last-1, a multiple of TileSize, none of whose windows is cut.
TSLBL_WIDE void FilterWholeTiles(const double* y, std::size_t first, std::size_t last, const double* weight,
                                 std::size_t half, double* out) {
  for (std::size_t i = first; i < last; i += TileSize) {
    Lanes sum[TileLanes];
#pragma GCC unroll 4
    for (std::size_t k = 0; k < TileLanes; ++k) {
      Load(y + i + k * LaneCount, sum[k]);
      sum[k] *= weight[0];
    }
    for (std::size_t j = 1; j <= half; ++j) {
#pragma GCC unroll 4
      for (std::size_t k = 0; k < TileLanes; ++k) {
        Lanes left;
        Lanes right;
        Load(y + i - j + k * LaneCount, left);
        Load(y + i + j + k * LaneCount, right);
        sum[k] += weight[j] * (left + right);
      }
    }
#pragma GCC unroll 4
    for (std::size_t k = 0; k < TileLanes; ++k) std::memcpy(out + i + k * LaneCount, &sum[k], sizeof sum[k]);
  }
}

// Distance j is within the window of the points j .. n-1-j only.
void FilterPoints(const double* y, const SmoothStretch& points, const std::vector<double>& weight,
                  double* out) {
  for (std::size_t i = points.first; i < points.last; ++i) out[i] = weight[0] * y[i];
  for (std::size_t j = 1; j < weight.size(); ++j) {
    const double w = weight[j];
    const std::size_t from = std::max(points.first, j);
    const std::size_t to = std::min(points.last, points.n - j);
    for (std::size_t i = from; i < to; ++i) out[i] += w * (y[i - j] + y[i + j]);
  }
}

// In pieces that stay in the nearest cache while one distance after the other is added.
void FilterPointsInTiles(const double* y, const SmoothStretch& points, const std::vector<double>& weight,
                         double* out) {
  constexpr std::size_t pieceSize = 64;
  for (std::size_t i = points.first; i < points.last; i += pieceSize) {
    FilterPoints(y, {points.n, i, std::min(points.last, i + pieceSize)}, weight, out);
  }
}

}  // namespace

void FilterSymmetric(const double* y, const SmoothStretch& stretch, const std::vector<double>& weight,
                     double* out) {
  const std::size_t half = weight.size() - 1;
  SmoothStretch rest = stretch.Inside(half);
  if (!rest.Empty()) {
    const std::size_t tiled = rest.first + (rest.last - rest.first) / TileSize * TileSize;
    FilterWholeTiles(y, rest.first, tiled, weight.data(), half, out);
    rest.first = tiled;
  }
  FilterPointsInTiles(y, stretch.LeftEnd(half), weight, out);
  FilterPointsInTiles(y, rest, weight, out);
  FilterPointsInTiles(y, stretch.RightEnd(half), weight, out);
}

}  // namespace TslMath
