#pragma once
// Fitting one group.
//
// For the sources of the library; not part of its interface.

#include <tslbl/overlap/EngineCalls.h>
#include <tslbl/overlap/OPDCandidate.h>
#include <span>
#include <vector>

namespace TslBL {

// Fits the estimates, at least one, as one group, from the start of the first one's data peak to the end of
// the last one's. Throws as QGroupPoints and CallFitPeaks do, and std::runtime_error if a fitted peak lies
// outside the group.
std::vector<OverlapPeakInfo> FitPeaksOf(const Spectrum& spectrum, std::span<const OPDEstimate> estimates,
                                        OPDParams::FittingFuncs method, OverlapPeakEngine* engine);

// The same, and adds the fitted peaks to the spectrum as a group. After an exception it has no new peak.
void FitGroup(Spectrum& spectrum, std::span<const OPDEstimate> estimates, OPDParams::FittingFuncs method,
              OverlapPeakEngine* engine);

}  // namespace TslBL
