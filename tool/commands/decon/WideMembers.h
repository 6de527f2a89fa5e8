#pragma once
// Peaks of an unresolved series that are none of its charges.

#include <tslbl/chargestate/DeconSpectrum.h>

namespace TslTool {

// Takes peaks out of unresolved series that are more than four times as wide as the median of their series: a
// hump of the background that stands where a charge is missing or weak has many times its area. The library
// works the series out anew; one that would not be valid without them goes. Throws std::runtime_error with
// the library's text.
void DropWideMembers(TslBL::DeconSpectrum& spectrum);

}  // namespace TslTool
