#include <tslbl/closed/math/smooth/MedianNetwork.h>

#include <tslbl/closed/math/Lanes.h>

#include <algorithm>
#include <array>
#include <utility>

namespace TslMath {
namespace {

struct Exchange {
  std::size_t low;
  std::size_t high;
};

// Batcher's odd-even merge sort, cut down to `width` wires. (K. Batcher, Sorting networks and their
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

TSLBL_INLINE void Sort(Lanes& low, Lanes& high) {
  const Lanes a = low;
  const Lanes b = high;
  low = b < a ? b : a;
  high = b > a ? b : a;
}

// Only the middle wire is used, so the compiler drops every comparison that does not reach it. Wires are
// named by constants throughout: so they are registers and not an array.
template <std::size_t Width, std::size_t... Wires, std::size_t... Steps>
TSLBL_INLINE void MediansOfGroup(const double* window, std::index_sequence<Wires...>,
                                 std::index_sequence<Steps...>, double* out) {
  constexpr auto network = SortingNetwork<Width>();
  Lanes wire[Width];
  (Load(window + Wires, wire[Wires]), ...);
  (Sort(wire[network[Steps].low], wire[network[Steps].high]), ...);
  Store(wire[Width / 2], out);
}

// The last group overlaps the one before it.
template <std::size_t Half>
TSLBL_INLINE void Medians(const double* y, std::size_t first, std::size_t last, double* out) {
  constexpr std::size_t width = 2 * Half + 1;
  const std::make_index_sequence<width> wires;
  const std::make_index_sequence<CountExchanges(width)> steps;
  for (std::size_t i = first; i < last; i += kLaneCount) {
    const std::size_t at = std::min(i, last - kLaneCount);
    MediansOfGroup<width>(y + (at - Half), wires, steps, out + at);
  }
}

// Calls the one of the widths 3, 5, 7 ... that is asked for.
template <std::size_t... Halves>
TSLBL_INLINE void MediansOf(std::size_t half, std::index_sequence<Halves...>, const double* y,
                            std::size_t first, std::size_t last, double* out) {
  ((half == Halves + 1 ? Medians<Halves + 1>(y, first, last, out) : void()), ...);
}

}  // namespace

TSLBL_WIDE void NetworkMedian(const double* y, std::size_t first, std::size_t last, std::size_t half,
                              double* out) {
  MediansOf(half, std::make_index_sequence<kMaxNetworkHalf>(), y, first, last, out);
}

}  // namespace TslMath
