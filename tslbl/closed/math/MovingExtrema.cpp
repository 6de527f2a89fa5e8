#include <tslbl/closed/math/MovingExtrema.h>

#include <algorithm>

namespace TslMath {
namespace {

struct Lesser {
  double operator()(double a, double b) const { return a < b ? a : b; }
};
struct Greater {
  double operator()(double a, double b) const { return a > b ? a : b; }
};

// heads[i]: extremum from the start of i's block of `window` points to i; tails[i]: from i to the block's
// end.
template <class Pick>
void ScanBlocks(const double* y, std::size_t n, std::size_t window, ExtremaScratch& scratch, Pick pick) {
  double* heads = scratch.heads.data();
  double* tails = scratch.tails.data();
  for (std::size_t begin = 0; begin < n; begin += window) {
    const std::size_t last = std::min(begin + window, n) - 1;
    double head = y[begin];
    double tail = y[last];
    for (std::size_t k = 0; k <= last - begin; ++k) {
      heads[begin + k] = head = pick(y[begin + k], head);
      tails[last - k] = tail = pick(y[last - k], tail);
    }
  }
}

// A whole window is the tail of one block and the head of the next; a window cut off by an end of the curve
// may lie within one block.
template <class Pick>
void JoinBlocks(std::size_t n, std::size_t half, const ExtremaScratch& scratch, double* out, Pick pick) {
  const double* heads = scratch.heads.data();
  const double* tails = scratch.tails.data();
  const std::size_t window = 2 * half + 1;
  const std::size_t lastBlock = (n - 1) / window * window;
  for (std::size_t i = 0; i < half; ++i) out[i] = heads[std::min(i + half, n - 1)];
  for (std::size_t i = half; i + half < n; ++i) out[i] = pick(tails[i - half], heads[i + half]);
  for (std::size_t i = std::max(half, n - half); i < n; ++i) {
    const std::size_t left = i - half;
    out[i] = left >= lastBlock ? tails[left] : pick(tails[left], heads[n - 1]);
  }
}

template <class Pick>
void MovingExtremum(const double* y, std::size_t n, std::size_t length, double* out, ExtremaScratch& scratch,
                    Pick pick) {
  if (n == 0) return;
  const std::size_t half = std::min(length / 2, n - 1);
  scratch.heads.resize(n);
  scratch.tails.resize(n);
  ScanBlocks(y, n, 2 * half + 1, scratch, pick);
  JoinBlocks(n, half, scratch, out, pick);
}

}  // namespace

void MovingMinimum(const double* y, std::size_t n, std::size_t length, double* out, ExtremaScratch& scratch) {
  MovingExtremum(y, n, length, out, scratch, Lesser{});
}

void MovingMaximum(const double* y, std::size_t n, std::size_t length, double* out, ExtremaScratch& scratch) {
  MovingExtremum(y, n, length, out, scratch, Greater{});
}

void MovingOpening(const double* y, std::size_t n, std::size_t length, double* out, ExtremaScratch& scratch) {
  MovingMinimum(y, n, length, out, scratch);
  MovingMaximum(out, n, length, out, scratch);
}

}  // namespace TslMath
