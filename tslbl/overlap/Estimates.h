#pragma once
// Where the peaks of each group are thought to stand before they are fitted.
//
// For the sources of the library; not part of its interface.

#include <tslbl/overlap/EngineCalls.h>
#include <tslbl/overlap/OPDCandidate.h>
#include <cstdint>
#include <span>
#include <vector>

namespace TslBL {

// The estimates of all groups of candidates, group by group, within each ascending by apex: the candidates
// themselves if all of a group are clean, otherwise what the engine proposes. A group has two of them at
// least, as one peak alone has nothing to be parted from, and MaxPeaks at most, the tallest. Throws as
// QGroupPoints and CallInitialEstimates do, and std::logic_error "Initial estimate created peaks out of group
// range.".
std::vector<OPDEstimate> MakeEstimates(const Spectrum& spectrum, std::span<const OPDCandidate> candidates,
                                       OverlapPeakEngine* engine);

// The candidate on which a point lies, of those of a group. For a point between two or beyond the last that
// is the nearer one, the left one of two that are equally near. Never of none.
const OPDCandidate& CandidateAt(std::span<const OPDCandidate> group, std::uint32_t index);

}  // namespace TslBL
