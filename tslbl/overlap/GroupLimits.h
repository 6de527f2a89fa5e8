#pragma once
// What a group of overlap peaks covers, and its peaks as estimates of the next fit.
//
// For the sources of the library; not part of its interface.

#include <tslbl/overlap/OPDCandidate.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <span>
#include <vector>

namespace TslBL {

struct MZLimits {
  double low = 0.0;
  double high = 0.0;
};

// From the start of the leftmost data peak of these to the end of the rightmost; both 0 without peaks. As
// all of this, throws std::logic_error "Invalid group range." for an overlap peak without a data peak on the
// curve.
MZLimits LimitsOfPeaks(const Spectrum& spectrum, std::span<const OverlapPeakInfo> peaks);

// Half of a peak's share of the points between the limits. Throws std::logic_error "Invalid group range." for
// limits in the wrong order. `count` is not 0.
double HalfWidthOfPeaks(const Spectrum& spectrum, const MZLimits& limits, std::size_t count);

std::vector<OPDEstimate> EstimatesOfPeaks(const Spectrum& spectrum, std::span<const OverlapPeakInfo> peaks,
                                          std::uint32_t group, double halfWidth);

}  // namespace TslBL
