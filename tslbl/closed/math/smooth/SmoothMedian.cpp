#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/smooth/MedianNetwork.h>
#include <tslbl/closed/math/smooth/MedianWindow.h>
#include <tslbl/closed/math/smooth/SmoothStretch.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <cmath>
#include <limits>

namespace TslMath {
namespace {

// Up to this width the window is kept sorted; above, keeping it sorted costs more than sorting the curve
// once.
constexpr std::size_t kMaxSortedWidth = 151;

// Outputs for one sorting of the curve: so many windows that the window's own points weigh little.
constexpr std::size_t kWindowsPerSorting = 4;
constexpr std::size_t kMinOutputsPerSorting = 4096;

// The two ends of the window never move back as i grows.
template <typename Window>
void SlideMedian(Window& window, const SmoothStretch& stretch, std::size_t half, double* out) {
  if (stretch.Empty()) return;
  std::size_t begin = stretch.first - stretch.HalfAt(stretch.first, half);
  std::size_t end = begin;
  for (std::size_t i = stretch.first; i < stretch.last; ++i) {
    const std::size_t reach = stretch.HalfAt(i, half);
    if (end == i + reach && begin + 1 == i - reach) window.Replace(begin++, end++);
    while (end < i + reach + 1) window.Insert(end++);
    while (begin < i - reach) window.Erase(begin++);
    out[i] = window.Ranked(reach);
  }
}

void SortedMedian(const double* y, const SmoothStretch& stretch, std::size_t half, double* out) {
  SortedWindow window(y, 2 * half + 3);
  SlideMedian(window, stretch, half, out);
}

void WideMedian(const double* y, const SmoothStretch& stretch, std::size_t half, double* out) {
  const std::size_t step = std::max(kMinOutputsPerSorting, kWindowsPerSorting * (2 * half + 1));
  for (std::size_t first = stretch.first; first < stretch.last; first += step) {
    const SmoothStretch part{stretch.n, first, std::min(stretch.last, first + step)};
    RankWindow window(y, first - std::min(first, half), std::min(part.last + half, part.n));
    SlideMedian(window, part, half, out);
  }
}

// Whether the samples have one order only: no NaN, nor a zero with a sign beside one without.
TSLBL_WIDE void FindDoubtful(const double* y, std::size_t n, bool& found) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr std::int64_t negativeZero = std::numeric_limits<std::int64_t>::min();
  LaneMask doubtful{};
  std::size_t i = 0;
  for (; i + kLaneCount <= n; i += kLaneCount) {
    Lanes value;
    Load(y + i, value);
    doubtful |= ~(value <= infinity) | ((LaneMask)value == negativeZero);
  }
  found = (doubtful[0] | doubtful[1] | doubtful[2] | doubtful[3]) != 0;
  for (; i < n; ++i) found |= std::isnan(y[i]) || (y[i] == 0 && std::signbit(y[i]));
}

// A stretch of whole narrow windows, in pieces: samples that a network cannot order spoil one piece only.
void NarrowMedian(const double* y, const SmoothStretch& inside, std::size_t half, double* out) {
  constexpr std::size_t pieceSize = 1024;
  for (std::size_t i = inside.first; i < inside.last; i += pieceSize) {
    const SmoothStretch piece{inside.n, i, std::min(inside.last, i + pieceSize)};
    bool doubtful = piece.last - piece.first < kLaneCount;
    if (!doubtful) FindDoubtful(y + (piece.first - half), piece.last - piece.first + 2 * half, doubtful);
    if (doubtful) {
      SortedMedian(y, piece, half, out);
    } else {
      NetworkMedian(y, piece.first, piece.last, half, out);
    }
  }
}

}  // namespace

void SmoothMedian(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end,
                  std::uint32_t width, double* out) {
  const SmoothStretch stretch = SmoothStretch::Clamped(n, start, end);
  if (stretch.Empty()) return;
  if (width <= 1) return CopyStretch(y, stretch, out);

  const std::size_t half = std::min<std::size_t>(width / 2, stretch.WidestHalf());
  const SmoothInput input(y, stretch, out);
  if (2 * half + 1 > kMaxSortedWidth) return WideMedian(input.Data(), stretch, half, out);
  SortedMedian(input.Data(), stretch.LeftEnd(half), half, out);
  if (half <= kMaxNetworkHalf) {
    NarrowMedian(input.Data(), stretch.Inside(half), half, out);
  } else {
    SortedMedian(input.Data(), stretch.Inside(half), half, out);
  }
  SortedMedian(input.Data(), stretch.RightEnd(half), half, out);
}

}  // namespace TslMath
