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

// The same for a tune's own scan, which goes back from the high end of its range to the low
// one. Throws std::runtime_error "Divide by zero error" if two points of one m/z leave the
// curve of the capillary exit open at an end.
TSLBL_API std::uint32_t SettlingDelay(const Tune& tune);

// The capillary exit of a tune at an m/z, in volts; see LensCurve. Throws likewise.
TSLBL_API double CapExitAt(const Tune& tune, double mz);

}  // namespace TslBL
