#include <tslbl/closed/math/MedianWindow.h>
#include <tslbl/closed/math/SmoothStretch.h>
#include <tslbl/closed/math/Smoothing.h>

#include <array>
#include <utility>

namespace TslMath {
namespace {

// Up to this width the window is kept sorted; above, keeping it sorted costs more than sorting the curve
// once.
constexpr std::size_t MaxSortedWidth = 151;

// Outputs for one sorting of the curve: so many windows that the window's own points weigh little.
constexpr std::size_t WindowsPerSorting = 4;
constexpr std::size_t MinOutputsPerSorting = 4096;

struct Exchange {
  std::size_t low;
  std::size_t high;
};

// Batcher's odd-even merge sort, cut down to Width wires. (K. Batcher, Sorting networks and their
// applications, 1968)
template <typename Visit>
constexpr void ForEachExchange(std::size_t width, Visit visit) {
  for (std::size_t p = 1; p < width; p *= 2)
    for (std::size_t k = p; k > 0; k /= 2)
      for (std::size_t j = k % p; j + k < width; j += 2 * k)
        for (std::size_t i = 0; i < k && i + j + k < width; ++i)
          if ((i + j) / (2 * p) == (i + j + k) / (2 * p)) visit(Exchange{i + j, i + j + k});
}

constexpr std::size_t CountExchanges(std::size_t width) {
  std::size_t count = 0;
  ForEachExchange(width, [&](Exchange) { ++count; });
  return count;
}

template <std::size_t Width>
constexpr auto SortingNetwork() {
  std::array<Exchange, CountExchanges(Width)> network{};
  std::size_t count = 0;
  ForEachExchange(Width, [&](Exchange exchange) { network[count++] = exchange; });
  return network;
}

inline void Sort(double& low, double& high) {
  const double a = low;
  const double b = high;
  low = b < a ? b : a;
  high = b < a ? a : b;
}

// Only the middle wire is used, so the compiler drops every comparison that does not reach it.
template <std::size_t Width, std::size_t... Steps>
inline double NetworkMedian(const double* window, std::index_sequence<Steps...>) {
  constexpr auto network = SortingNetwork<Width>();
  double wire[Width];
  for (std::size_t k = 0; k < Width; ++k) wire[k] = window[k];
  (Sort(wire[network[Steps].low], wire[network[Steps].high]), ...);
  return wire[Width / 2];
}

template <std::size_t Width>
void NarrowMedian(const double* __restrict y, const SmoothStretch& inside, double* __restrict out) {
  const std::make_index_sequence<CountExchanges(Width)> steps;
  for (std::size_t i = inside.first; i < inside.last; ++i)
    out[i] = NetworkMedian<Width>(y + (i - Width / 2), steps);
}

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
  const std::size_t step = std::max(MinOutputsPerSorting, WindowsPerSorting * (2 * half + 1));
  for (std::size_t first = stretch.first; first < stretch.last; first += step) {
    const SmoothStretch part{stretch.n, first, std::min(stretch.last, first + step)};
    RankWindow window(y, first - std::min(first, half), std::min(part.last + half, part.n));
    SlideMedian(window, part, half, out);
  }
}

void NarrowMedianInside(const double* y, const SmoothStretch& inside, std::size_t half, double* out) {
  switch (half) {
    case 1:
      return NarrowMedian<3>(y, inside, out);
    case 2:
      return NarrowMedian<5>(y, inside, out);
    case 3:
      return NarrowMedian<7>(y, inside, out);
    case 4:
      return NarrowMedian<9>(y, inside, out);
    default:
      return SortedMedian(y, inside, half, out);
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
  if (2 * half + 1 > MaxSortedWidth) return WideMedian(input.Data(), stretch, half, out);
  SortedMedian(input.Data(), stretch.LeftEnd(half), half, out);
  NarrowMedianInside(input.Data(), stretch.Inside(half), half, out);
  SortedMedian(input.Data(), stretch.RightEnd(half), half, out);
}

}  // namespace TslMath
