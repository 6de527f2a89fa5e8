#include <tslbl/closed/math/smooth/SymmetricFilter.h>

#include <tslbl/closed/math/Lanes.h>

namespace TslMath {
namespace {

// Vectors of outputs summed side by side: enough to keep the adders busy, few enough to stay in registers, of
// which there are twice as many where they are widest.
template <class Vector>
constexpr std::size_t kTileVectors = sizeof(Vector) > sizeof(Lanes) ? 8 : 4;

// Outputs first .. last-1, none of whose windows is cut.
struct WholeTiles {
  const double* y;
  std::size_t first;
  std::size_t last;
  const double* weight;
  std::size_t half;
  double* out;
};

template <class Vector>
constexpr std::size_t kTileSize = kTileVectors<Vector> * sizeof(Vector) / sizeof(double);

template <class Vector>
TSLBL_INLINE void FilterTiles(const WholeTiles& tiles) {
  constexpr std::size_t size = sizeof(Vector) / sizeof(double);
  const double* weight = tiles.weight;
  for (std::size_t i = tiles.first; i < tiles.last; i += kTileSize<Vector>) {
    const double* y = tiles.y + i;
    Vector sum[kTileVectors<Vector>];
#pragma GCC unroll 8
    for (std::size_t k = 0; k < kTileVectors<Vector>; ++k) {
      Load(y + k * size, sum[k]);
      sum[k] *= weight[0];
    }
    for (std::size_t j = 1; j <= tiles.half; ++j) {
#pragma GCC unroll 8
      for (std::size_t k = 0; k < kTileVectors<Vector>; ++k) {
        Vector left;
        Vector right;
        Load(y + k * size - j, left);
        Load(y + k * size + j, right);
        sum[k] += weight[j] * (left + right);
      }
    }
#pragma GCC unroll 8
    for (std::size_t k = 0; k < kTileVectors<Vector>; ++k) Store(sum[k], tiles.out + i + k * size);
  }
}

TSLBL_WIDE void FilterLanes(const WholeTiles& tiles) { FilterTiles<Lanes>(tiles); }
#ifdef TSLBL_WIDEST
TSLBL_WIDEST void FilterWideLanes(const WholeTiles& tiles) { FilterTiles<WideLanes>(tiles); }
#endif

template <class Vector>
WholeTiles TilesFrom(std::size_t first, std::size_t last, const WholeTiles& all) {
  return {all.y,      first,    first + (last - first) / kTileSize<Vector> * kTileSize<Vector>,
          all.weight, all.half, all.out};
}

// Filters what it can of first .. last-1, wide tiles before narrower ones, and returns where it has stopped.
std::size_t FilterWholeTiles(const WholeTiles& all) {
  std::size_t first = all.first;
#ifdef TSLBL_WIDEST
  if (HasWidestRegisters()) {
    const WholeTiles wide = TilesFrom<WideLanes>(first, all.last, all);
    FilterWideLanes(wide);
    first = wide.last;
  }
#endif
  const WholeTiles narrow = TilesFrom<Lanes>(first, all.last, all);
  FilterLanes(narrow);
  return narrow.last;
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
  if (!rest.Empty()) rest.first = FilterWholeTiles({y, rest.first, rest.last, weight.data(), half, out});
  FilterPointsInTiles(y, stretch.LeftEnd(half), weight, out);
  FilterPointsInTiles(y, rest, weight, out);
  FilterPointsInTiles(y, stretch.RightEnd(half), weight, out);
}

}  // namespace TslMath
