#pragma once
// From a double to an integer, whatever the double holds.

#include <limits>

namespace TslCommon {

// The value without its fraction. Beyond the range of Int it is the nearest end, and 0 for
// a NaN: converting such a value in C++ itself is undefined.
template <class Int>
Int Truncate(double value) {
  constexpr double kLow = static_cast<double>(std::numeric_limits<Int>::min());
  // One past the largest Int, exact in a double for every width.
  constexpr Int kHalf = std::numeric_limits<Int>::max() / 2 + 1;
  constexpr double kPastHigh = 2.0 * static_cast<double>(kHalf);
  if (value >= kPastHigh) return std::numeric_limits<Int>::max();
  if (value > kLow - 1.0) return static_cast<Int>(value);
  return value <= kLow ? std::numeric_limits<Int>::min() : Int{0};
}

}  // namespace TslCommon
