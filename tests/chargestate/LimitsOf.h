#pragma once
// Limits that a query of two arguments gives, as a pair.

#include <utility>

namespace tests {

template <class T>
std::pair<T, T> LimitsOf(void (*query)(T& min, T& max)) {
  std::pair<T, T> limits;
  query(limits.first, limits.second);
  return limits;
}

}  // namespace tests
