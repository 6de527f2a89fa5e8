#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/smooth/Smoothing.h>
#include <tslbl/closed/math/smooth/SymmetricFilter.h>

namespace TslMath {
namespace {

// Up to this half window adding the points anew for each output is faster than sums over blocks, since
// neighbouring outputs are added side by side.
constexpr std::size_t kMaxDirectHalf = 8;

// The window of a whole mean: `full` points of weight 1 on each side of the centre and, for even widths, one
// more of weight 1/2.
struct MeanWindow {
  std::size_t half;
  bool halfWeightEnds;

  MeanWindow(std::uint32_t width, const SmoothStretch& stretch)
      : half(width / 2), halfWeightEnds(width % 2 == 0 && half <= stretch.WidestHalf()) {
    half = std::min(half, stretch.WidestHalf());
  }

  std::size_t Full() const { return halfWeightEnds ? half - 1 : half; }
  double Width() const { return static_cast<double>(halfWeightEnds ? 2 * half : 2 * half + 1); }
};

double PointsAround(std::size_t half) { return static_cast<double>(2 * half + 1); }

// Vectors of outputs summed side by side.
constexpr std::size_t kMeanLanes = 4;
constexpr std::size_t kMeanTile = kMeanLanes * kLaneCount;

// sum[k] += weight * (what is `distance` points to the left + what is as far to the right), from y[k] on.
TSLBL_INLINE void AddPair(const double* y, std::size_t distance, double weight, Lanes* sum) {
#pragma GCC unroll 4
  for (std::size_t k = 0; k < kMeanLanes; ++k) {
    Lanes left, right;
    Load(y + k * kLaneCount - distance, left);
    Load(y + k * kLaneCount + distance, right);
    sum[k] += weight == 1 ? left + right : weight * (left + right);
  }
}

// Outputs first .. last-1, a multiple of kMeanTile, none of whose windows is cut.
TSLBL_WIDE void MeansOfTiles(const double* y, std::size_t first, std::size_t last, const MeanWindow& window,
                             double* out) {
  const std::size_t full = window.Full();
  const double width = window.Width();
  for (std::size_t i = first; i < last; i += kMeanTile) {
    Lanes sum[kMeanLanes];
#pragma GCC unroll 4
    for (std::size_t k = 0; k < kMeanLanes; ++k) Load(y + i + k * kLaneCount, sum[k]);
    for (std::size_t j = 1; j <= full; ++j) AddPair(y + i, j, 1, sum);
    if (window.halfWeightEnds) AddPair(y + i, window.half, 0.5, sum);
#pragma GCC unroll 4
    for (std::size_t k = 0; k < kMeanLanes; ++k) Store(sum[k] / width, out + i + k * kLaneCount);
  }
}

void NarrowMean(const double* y, const SmoothStretch& stretch, const MeanWindow& window, double* out) {
  const SmoothStretch inside = stretch.Inside(window.half);
  SmoothStretch rest = inside;
  if (!inside.Empty()) {
    rest.first += (inside.last - inside.first) / kMeanTile * kMeanTile;
    MeansOfTiles(y, inside.first, rest.first, window, out);
  }
  std::vector<double> weight(window.half + 1, 1.0);
  if (window.halfWeightEnds) weight.back() = 0.5;
  FilterSymmetric(y, rest, weight, out);
  for (std::size_t i = rest.first; i < rest.last; ++i) out[i] /= window.Width();
  for (const SmoothStretch& end : {stretch.LeftEnd(window.half), stretch.RightEnd(window.half)}) {
    FilterSymmetric(y, end, weight, out);
    for (std::size_t i = end.first; i < end.last; ++i) out[i] /= PointsAround(end.HalfAt(i, window.half));
  }
}

// At an end each window holds the one before it and two more points.
void LeftEndMean(const double* y, const SmoothStretch& end, double* out) {
  double sum = 0;
  for (std::size_t i = 0; i < end.last; ++i) {
    sum += i == 0 ? y[0] : y[2 * i - 1] + y[2 * i];
    if (i >= end.first) out[i] = sum / PointsAround(i);
  }
}

void RightEndMean(const double* y, const SmoothStretch& end, double* out) {
  const double* tail = y + end.n - 1;
  double sum = 0;
  for (std::size_t i = 0; end.n - i > end.first; ++i) {
    sum += i == 0 ? *tail : *(tail - 2 * i + 1) + *(tail - 2 * i);
    if (end.n - i <= end.last) out[end.n - 1 - i] = sum / PointsAround(i);
  }
}

// Sums over windows of `length` points that begin at first .. last-1. With the curve cut into blocks of that
// length at fixed places, a window is the tail of one block and the head of the next: two additions a point
// whatever the length, and, other than with a running sum, nothing to subtract that leaves its rounding error
// behind.
class WindowSums {
 public:
  WindowSums(const double* y, std::size_t length) : y_(y), length_(length), tail_(length) {}

  template <typename Use>
  void ForEach(std::size_t first, std::size_t last, Use use) {
    for (std::size_t block = first / length_ * length_; block < last; block += length_) {
      SumTails(block);
      double head = 0;
      for (std::size_t k = 0; k < length_ && block + k < last; ++k) {
        if (k > 0) head += y_[block + length_ + k - 1];
        if (block + k >= first) use(block + k, tail_[k] + head);
      }
    }
  }

 private:
  void SumTails(std::size_t block) {
    double sum = 0;
    for (std::size_t k = length_; k-- > 0;) tail_[k] = sum += y_[block + k];
  }

  const double* y_;
  std::size_t length_;
  std::vector<double> tail_;
};

void WideMean(const double* y, const SmoothStretch& stretch, const MeanWindow& window, double* out) {
  LeftEndMean(y, stretch.LeftEnd(window.half), out);
  RightEndMean(y, stretch.RightEnd(window.half), out);
  const SmoothStretch inside = stretch.Inside(window.half);
  if (inside.Empty()) return;
  const std::size_t full = window.Full();
  const std::size_t half = window.half;
  const double width = window.Width();
  WindowSums sums(y, 2 * full + 1);
  sums.ForEach(inside.first - full, inside.last - full, [&](std::size_t begin, double sum) {
    const std::size_t i = begin + full;
    out[i] = (window.halfWeightEnds ? sum + 0.5 * (y[i - half] + y[i + half]) : sum) / width;
  });
}

}  // namespace

void SmoothMean(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end, std::uint32_t width,
                double* out) {
  const SmoothStretch stretch = SmoothStretch::Clamped(n, start, end);
  if (stretch.Empty()) return;
  if (width <= 1) return CopyStretch(y, stretch, out);

  const MeanWindow window(width, stretch);
  const SmoothInput input(y, stretch, out);
  if (window.half <= kMaxDirectHalf) {
    NarrowMean(input.Data(), stretch, window, out);
  } else {
    WideMean(input.Data(), stretch, window, out);
  }
}

}  // namespace TslMath
