#pragma once
// Two sets of samples that a median filter slides over a curve. Both take samples in and out by their index
// and tell the value that `below` others in the set do not exceed, ordered so that NaN is a value like any
// other.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TslMath {

// Integers in the order of the doubles: -0 before +0, NaN beyond the infinity of its sign.
std::int64_t OrderedKey(double value);
double ValueOfKey(std::int64_t key);

// A sorted array: best for short windows. Each change costs O(size), a replacement by a near value O(log
// size).
class SortedWindow {
 public:
  SortedWindow(const double* y, std::size_t capacity) : y_(y) { keys_.reserve(capacity); }

  void Insert(std::size_t index);
  void Erase(std::size_t index);
  void Replace(std::size_t oldIndex, std::size_t newIndex);
  double Ranked(std::size_t below) { return ValueOfKey(keys_[below]); }

 private:
  const double* y_;
  std::vector<std::int64_t> keys_;
};

// Samples sorted once beforehand, and a mark for each whether it is in the set: best for long windows. The
// asked-for rank is found from the one asked for before, which a sliding window leaves near.
class RankWindow {
 public:
  // Can hold the samples first .. last-1.
  RankWindow(const double* y, std::size_t first, std::size_t last);

  void Insert(std::size_t index);
  void Erase(std::size_t index);
  void Replace(std::size_t oldIndex, std::size_t newIndex);
  double Ranked(std::size_t below);

 private:
  std::size_t NextMarked(std::size_t rank) const;
  std::size_t MarkedBefore(std::size_t rank) const;

  std::size_t first_;
  std::vector<std::uint32_t> rankOf_;
  std::vector<std::int64_t> keys_;
  std::vector<std::uint64_t> marks_;
  std::size_t at_ = 0;
  std::size_t below_ = 0;
};

}  // namespace TslMath
