#pragma once
// A curve cut into segments of nearly equal length.
#include <algorithm>
#include <cstddef>

namespace TslMath {

// round(n / length) segments, at least one. Every point belongs to exactly one segment and no segment is
// empty, if n > 0 and length > 0.
class Segments {
 public:
  Segments(std::size_t n, std::size_t length) : n_(n), count_(Count(n, length)) {}

  std::size_t Count() const { return count_; }
  // Segment k is the points Begin(k) .. Begin(k + 1) - 1.
  std::size_t Begin(std::size_t k) const { return (k * n_ + count_ / 2) / count_; }
  double Centre(std::size_t k) const { return 0.5 * static_cast<double>(Begin(k) + Begin(k + 1) - 1); }
  std::size_t Longest() const { return n_ / count_ + 1; }

 private:
  static std::size_t Count(std::size_t n, std::size_t length) {
    const std::size_t whole = n / length;
    return std::max<std::size_t>(1, whole + (n % length >= length - length / 2 ? 1 : 0));
  }

  std::size_t n_;
  std::size_t count_;
};

}  // namespace TslMath
