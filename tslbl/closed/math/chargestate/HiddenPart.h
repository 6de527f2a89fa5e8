#pragma once
// A molecule whose charges are all those of its dimer or trimer, too.
#include <tslbl/closed/math/chargestate/ChargeSeries.h>
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace TslMath {

// The half or third of a series whose second or third charges stand out of their neighbours by a factor
// of 1.35 or more, four in five of them clearly, and by more than the intensities scatter. A molecule's
// intensities rise and fall evenly with the charge (Z. Zhang, A. Marshall, 1998, see UnresolvedSeries.h); a
// complex and its part add up at these charges alone. Of envelopes without a part that scatter by 30 percent
// two in a thousand seem to have one. A charge without a peak counts as the weakest member. Nothing of less
// than `least` such charges, or of less than seven in all. The part's members are those of the series.
std::optional<ChargeSeries> HiddenPart(const ChargeSeries& series, std::span<const IonPeak> peaks,
                                       std::int32_t parts, std::size_t least, double carrierMass);

}  // namespace TslMath
