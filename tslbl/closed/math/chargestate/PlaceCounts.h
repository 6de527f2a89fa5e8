#pragma once
// How many of the places entered so far lie in a stretch, each in O(log n): P. Fenwick, A new data structure
// for cumulative frequency tables, 1994.
#include <cstddef>
#include <vector>

namespace TslMath {

class PlaceCounts {
 public:
  explicit PlaceCounts(std::size_t size) : sums_(size + 1, 0) {}

  void Enter(std::size_t place) {
    for (std::size_t i = place + 1; i < sums_.size(); i += LowestBit(i)) ++sums_[i];
  }

  std::size_t Between(std::size_t first, std::size_t pastLast) const {
    return Before(pastLast) - Before(first);
  }

 private:
  static std::size_t LowestBit(std::size_t i) { return i & (~i + 1); }

  std::size_t Before(std::size_t place) const {
    std::size_t count = 0;
    for (std::size_t i = place; i > 0; i -= LowestBit(i)) count += sums_[i];
    return count;
  }

  std::vector<std::size_t> sums_;
};

}  // namespace TslMath
