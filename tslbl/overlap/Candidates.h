#pragma once
// Which data peaks of a spectrum are to be deconvolved, and which of them go together.
//
// For the sources of the library; not part of its interface.

#include <tslbl/overlap/OPDCandidate.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// The candidate of a row of the peak table, of which `peak` is the translation. Throws std::logic_error "Bad
// peak index." if it is that of another row.
OPDCandidate MakeCandidate(const Spectrum& spectrum, std::uint32_t row, const MZPeak& peak);

// A candidate for each data peak that the spectrum's OPDParams ask for, ascending by apex.
std::vector<OPDCandidate> BuildCandidates(const Spectrum& spectrum);

// Whether two peaks run into each other: `left` ends at most 0.25 m/z before `right` begins, and stands there
// at least MinAmplPercentCmnEndPt of the lower one's height above the baseline. An end a percent or more
// below the baseline joins them too. Throws std::logic_error "Amplitude less than baseline." if the lower
// peak has no height.
bool AreJoined(const Spectrum& spectrum, const OPDCandidate& left, const OPDCandidate& right);

// Takes out the clean peaks that are joined to no neighbour still there, and marks those that are not clean:
// whose resolution is too low or whose maximum lies too far from the centroid.
void FilterCandidates(const Spectrum& spectrum, std::vector<OPDCandidate>& candidates);

// Numbers the groups from 1; a candidate belongs to the group of the one before if the two are joined.
void NumberGroups(const Spectrum& spectrum, std::vector<OPDCandidate>& candidates);

}  // namespace TslBL
