#pragma once
// Overlap peak deconvolution: detected peaks that are merges of several ions, or that run into a neighbour,
// are gathered in groups, and a sum of Gaussian peaks is fitted to each group. What is fitted stands beside
// the peak table, in Spectrum::overlapPeaks, and the data peaks are marked with the number of their group;
// the peak table itself stays. The parameters are Spectrum::opdParams.
//
// The same as a command of a chain is CurveEval(OPDParams), which fails without a message on a curve that is
// no spectrum. The fit is done by an engine that an application may exchange:
// closed/engines/OverlapPeakEngine.h.

#include <tslbl/Export.h>
#include <tslbl/curve/Changed.h>
#include <tslbl/spectrum/Spectrum.h>
#include <string>

namespace TslBL {

// Detects the peaks first if that has not been done. False without a message if that found out nothing new
// about the peaks.
TSLBL_API bool ExecuteOPD(Spectrum& spectrum, Changed& changed, std::wstring& error);

// Deconvolves the whole spectrum anew: what was fitted before goes. False with a message in `error` if peaks
// have not been detected. On success the spectrum has STATUS_OPD, which freezes it, also if there was nothing
// to fit; it may be deconvolved again.
//
// Groups are worked on on the threads on which peaks are described (detect/ThreadingParams.h), if the engine
// allows it; the outcome does not depend on their number.
//
// A group whose fit fails stays unfitted, without a message. Throws std::runtime_error if there is no engine,
// std::logic_error for a peak table that does not fit the curve and for an engine that proposes peaks outside
// the group, and ComError (closed/common/ComponentRegistry.h) with the code of an engine that failed. After
// an exception what was fitted before is gone, groups that this run has fitted stay, and the status and the
// history are as they were.
TSLBL_API bool DoOPD(Spectrum& spectrum, Changed& changed, std::wstring& error);

}  // namespace TslBL
