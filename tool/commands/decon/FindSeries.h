#pragma once
// The search for charge state series in one spectrum, by one method or by both.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <cstddef>

namespace TslTool {

// Which method goes first where both are asked for.
enum class Order {
  ResolvedFirst,
  UnresolvedFirst,
  OfList,  // that order in which the first explains more of it
};

// Fills the series and the mass curve of a spectrum whose peaks have been detected, by its CSParams. Where
// both methods are asked for, the first works on all peaks and the second on those that the first left, so
// that no peak belongs to both: by one pass over all of them, isotopes of one molecule would pass for charges
// of others. Behind resolved molecules only unresolved series with a charge count whose isotopes are too
// close to stand apart: lower ones are isotopes that were left over. Unresolved series
// are looked for from m/z 350 on, unless CSParams has a range of its own, and those whose masses scatter by
// more than 280 ppm, as chance makes them, are left out, too; of a list, whose peaks may be noise, resolved
// ones that chance makes (ChanceSeries.h); their number is returned. No series is a result as well, which can
// be edited.
//
// Throws std::runtime_error with the library's text, and what an engine throws.
std::size_t FindSeries(TslBL::DeconSpectrum& spectrum, Order order);

}  // namespace TslTool
