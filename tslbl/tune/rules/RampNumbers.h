#pragma once
// Values of a ramp as the whole numbers that some fields of a tune hold: cut off, but a ramp without a
// result, or below zero where nothing is, must be refused by the limits. No such number may turn into a good
// one.
//
// For the sources of the rules; not part of the library's interface.

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/records/Common.h>
#include <cmath>
#include <cstdint>
#include <limits>

namespace TslBL {

inline std::int32_t WholeOfRamp(double value) {
  return std::isnan(value) ? std::numeric_limits<std::int32_t>::min() : Truncate<std::int32_t>(value);
}

inline std::uint32_t UnsignedOfRamp(double value) {
  return value > -1.0 ? Truncate<std::uint32_t>(value) : std::numeric_limits<std::uint32_t>::max();
}

}  // namespace TslBL
