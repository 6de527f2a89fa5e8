#pragma once
// The spans that a SIM may have.
//
// For the sources of this room; not part of the library's interface.

namespace TslBL {

// In m/z, by Control::SimWithSpanTypes.
inline constexpr double kSimSpans[] = {0.0, 0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0};

}  // namespace TslBL
