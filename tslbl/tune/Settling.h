#pragma once
// How long the instrument must rest before it measures.

#include <tslbl/Export.h>
#include <cstdint>

namespace TslBL {

// The microseconds that the ion path needs after a move from m/z `low` to `high` (or back)
// across which the capillary exit changes by `capExitChange` volts: the longer of what the
// mass axis and what the lens takes.
TSLBL_API std::uint32_t SettlingDelay(double high, double low, double capExitChange);

}  // namespace TslBL
