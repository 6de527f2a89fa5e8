#pragma once
// The two results of a query of limits.
//
// For the sources of the library; not part of its interface.

namespace TslBL {

template <class T>
void SetLimits(T& min, T smallest, T& max, T largest) {
  min = smallest;
  max = largest;
}

}  // namespace TslBL
