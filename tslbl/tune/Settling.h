#pragma once
// How long the instrument must rest before it measures.

#include <tslbl/Export.h>
#include <tslbl/tune/Tune.h>
#include <cstdint>

namespace TslBL {

// The microseconds that the ion path needs after a move from m/z `low` to `high` (or back)
// across which the capillary exit changes by `capExitChange` volts: the longer of what the
// mass axis and what the lens takes.
TSLBL_API std::uint32_t SettlingDelay(double high, double low, double capExitChange);

// The capillary exit of a tune at an m/z, in volts: its single value, or that of its curve
// within the limits of the field. Throws std::runtime_error "Divide by zero error" if two
// points of one m/z leave the curve undefined there.
TSLBL_API double CapExitAt(const Tune& tune, double mz);

}  // namespace TslBL
