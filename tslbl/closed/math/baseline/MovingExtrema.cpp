#include <tslbl/closed/math/baseline/MovingExtrema.h>

#include <tslbl/closed/math/Lanes.h>
#include <algorithm>

namespace TslMath {
namespace {

struct Lesser {
  TSLBL_INLINE double operator()(double a, double b) const { return a < b ? a : b; }
  TSLBL_INLINE void Join(Lanes& a, const Lanes& b) const { a = a < b ? a : b; }
};
struct Greater {
  TSLBL_INLINE double operator()(double a, double b) const { return a > b ? a : b; }
  TSLBL_INLINE void Join(Lanes& a, const Lanes& b) const { a = a > b ? a : b; }
};

// out[i] = pick(y[i], y[i + distance]) for i < count; out may be y.
template <class Pick>
TSLBL_INLINE void JoinPairs(const double* y, std::size_t distance, std::size_t count, double* out,
                            Pick pick) {
  std::size_t i = 0;
  for (; i + kLaneCount <= count; i += kLaneCount) {
    Lanes near, far;
    Load(y + i, near);
    Load(y + i + distance, far);
    pick.Join(near, far);
    Store(near, out + i);
  }
  for (; i < count; ++i) out[i] = pick(y[i], y[i + distance]);
}

// The same twice in one pass: the picks of four values, `distance` apart.
template <class Pick>
TSLBL_INLINE void JoinFours(const double* y, std::size_t distance, std::size_t count, double* out,
                            Pick pick) {
  std::size_t i = 0;
  for (; i + kLaneCount <= count; i += kLaneCount) {
    Lanes joined[4];
#pragma GCC unroll 4
    for (std::size_t k = 0; k < 4; ++k) Load(y + i + k * distance, joined[k]);
    pick.Join(joined[0], joined[1]);
    pick.Join(joined[2], joined[3]);
    pick.Join(joined[0], joined[2]);
    Store(joined[0], out + i);
  }
  for (; i < count; ++i) {
    out[i] = pick(pick(y[i], y[i + distance]), pick(y[i + 2 * distance], y[i + 3 * distance]));
  }
}

// out[i] = extremum of y[i .. i+window-1], in windows of 4, 16, 64 ... points, the last two of which overlap.
// `work` has n values; out may be y.
template <class Pick>
TSLBL_INLINE void SlideInside(const double* y, std::size_t n, std::size_t window, double* work, double* out,
                              Pick pick) {
  std::size_t done = 1;
  for (; 4 * done <= window; done *= 4) {
    JoinFours(y, done, n - 4 * done + 1, work, pick);
    y = work;
  }
  if (2 * done < window) {
    JoinPairs(y, done, n - 2 * done + 1, work, pick);
    y = work;
    done *= 2;
  }
  JoinPairs(y, window - done, n - window + 1, out, pick);
}

TSLBL_WIDE void Slide(const double* y, std::size_t n, std::size_t window, double* work, double* out,
                      Lesser pick) {
  SlideInside(y, n, window, work, out, pick);
}

TSLBL_WIDE void Slide(const double* y, std::size_t n, std::size_t window, double* work, double* out,
                      Greater pick) {
  SlideInside(y, n, window, work, out, pick);
}

// Extrema of the first (last) 1, 2, 3 ... points: all that the windows need which an end of the curve cuts.
template <class Pick>
void ScanEnds(const double* y, std::size_t n, ExtremaScratch& scratch, Pick pick) {
  double head = y[0];
  double tail = y[n - 1];
  for (std::size_t k = 0; k < scratch.heads.size(); ++k) {
    scratch.heads[k] = head = pick(y[k], head);
    scratch.tails[k] = tail = pick(y[n - 1 - k], tail);
  }
}

template <class Pick>
void MovingExtremum(const double* y, std::size_t n, std::size_t length, double* out, ExtremaScratch& scratch,
                    Pick pick) {
  if (n == 0) return;
  const std::size_t half = std::min(length / 2, n - 1);
  const std::size_t window = 2 * half + 1;
  scratch.heads.resize(std::min(n, 2 * half));
  scratch.tails.resize(scratch.heads.size());
  ScanEnds(y, n, scratch, pick);
  if (n >= window) {
    scratch.work.resize(n);
    Slide(y, n, window, scratch.work.data(), out + half, pick);
  }
  for (std::size_t i = 0; i < half; ++i) out[i] = scratch.heads[std::min(i + half, n - 1)];
  for (std::size_t i = std::max(half, n - half); i < n; ++i) out[i] = scratch.tails[n - 1 - i + half];
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
