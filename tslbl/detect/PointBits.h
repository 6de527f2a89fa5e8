#pragma once
// How the points of a curve compare with their neighbours and with the baseline, a bit for each
// of 64 points. The sweep for features then passes over what lies between two places of
// interest in one step, however far they are apart.
//
// A comparison with a NaN is false, and so is one with a point beyond the end.

#include <tslbl/detect/PeakWalks.h>
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TslBL {

struct PointBits {
  std::uint64_t above;   // y[i] above the baseline
  std::uint64_t apex;    // y[i-1] < y[i] and y[i+1] <= y[i], the first of these not asked of point 0
  std::uint64_t rise;    // y[i] < y[i+1] and y[i] < y[i+2]: a valley to the left of them ends
  std::uint64_t foot;    // y[i] < y[i+1] but not y[i-1] < y[i]: where the curve begins to rise
  std::uint64_t bottom;  // above, and y[i] < y[i-1] and y[i] < y[i-2]
};

bool HasWideRegisters();

// The bits of the points from `begin` on up to, not including, `end`; at first only those for
// `above`. Comparisons with points before `begin` are false.
class BitsOfStretch {
 public:
  // `wide`, for a processor that has wide registers, gives the same in less time.
  BitsOfStretch(const CurveView& curve, std::ptrdiff_t begin, std::ptrdiff_t end,
                bool wide = HasWideRegisters());

  // Makes the other bits of a stretch, both ends included. Stretches come in ascending order.
  void Compare(std::ptrdiff_t first, std::ptrdiff_t last);

  // `select` makes a word of bits out of the PointBits of 64 points; a point is selected if its bit
  // is 1. Next: the first selected point from i on; `end` if there is none before `end`.
  template <class Select>
  std::ptrdiff_t Next(std::ptrdiff_t i, std::ptrdiff_t end, Select select) const {
    if (i >= end) return end;
    std::size_t word = WordOf(i);
    std::uint64_t bits = select(words_[word]) & (~std::uint64_t{0} << BitOf(i));
    const std::size_t last = WordOf(end - 1);
    while (bits == 0) {
      if (word == last) return end;
      bits = select(words_[++word]);
    }
    return std::min(PlaceOf(word, std::countr_zero(bits)), end);
  }

  // Previous: the last selected point from i down to `first`, both included; first - 1 if there is none.
  template <class Select>
  std::ptrdiff_t Previous(std::ptrdiff_t i, std::ptrdiff_t first, Select select) const {
    if (i < first) return first - 1;
    std::size_t word = WordOf(i);
    std::uint64_t bits = select(words_[word]) & (~std::uint64_t{0} >> (63 - BitOf(i)));
    const std::size_t last = WordOf(first);
    while (bits == 0) {
      if (word == last) return first - 1;
      bits = select(words_[--word]);
    }
    return std::max(PlaceOf(word, 63 - std::countl_zero(bits)), first - 1);
  }

  bool Has(std::ptrdiff_t i, std::uint64_t PointBits::*kind) const {
    return (words_[WordOf(i)].*kind >> BitOf(i) & 1) != 0;
  }

 private:
  std::size_t WordOf(std::ptrdiff_t i) const { return static_cast<std::size_t>(i - begin_) / 64; }
  int BitOf(std::ptrdiff_t i) const { return static_cast<int>((i - begin_) % 64); }
  std::ptrdiff_t PlaceOf(std::size_t word, int bit) const {
    return begin_ + static_cast<std::ptrdiff_t>(word) * 64 + bit;
  }

  void CompareWord(std::size_t word);

  const CurveView& curve_;
  std::ptrdiff_t begin_;
  bool wide_;
  std::vector<PointBits> words_;
  std::size_t compared_ = 0;  // words before this one need no comparing
};

}  // namespace TslBL
