#pragma once
// Taking over what overlap peak deconvolution gave on a copy of a spectrum, as an application makes it that
// runs part of a spectrum in the background.

#include <tslbl/Export.h>
#include <tslbl/records/OPDParams.h>
#include <tslbl/spectrum/Spectrum.h>

namespace TslBL {

// `source` is a copy of `target` on which a run was made with `params`. If they ask for the full range, it
// takes the target's place. Otherwise the target receives its history and its parameters, the data peaks
// that it has and the target has not, and its groups, in the ranges that are enabled; the target's status
// stays. Before a group comes in its range is cleared, and with it, as ClearOverlapRange of
// spectrum/OverlappedCurve.h tells, all overlap peaks of data peaks left of it. Throws std::logic_error
// "Invalid group range." for a group of the source on data peaks that the target lacks.
TSLBL_API void OPDMergePeakTable(const OPDParams& params, Spectrum& target, const Spectrum& source);

}  // namespace TslBL
