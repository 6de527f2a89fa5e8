#pragma once
// What an evaluation has touched. Steps only ever set flags, so that one object gathers
// the effect of a whole chain.

#include <cstdint>

namespace TslBL {

struct Changed {
  std::uint32_t value = 0;  // the caller's own
  bool yAxis : 1 = false;
  bool baseline : 1 = false;
  bool noise : 1 = false;
  bool threshold : 1 = false;
  bool peaks : 1 = false;
  bool overlapPeaks : 1 = false;
  bool chargeState : 1 = false;

  Changed() = default;
  Changed(std::uint32_t callersValue) : value(callersValue) {}
};

}  // namespace TslBL
