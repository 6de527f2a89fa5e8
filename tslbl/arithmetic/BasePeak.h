#pragma once
// The base peak of a range, for curves of base peaks over a run.

#include <tslbl/Export.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/spectrum/Spectrum.h>
#include <string>
#include <vector>

namespace TslBL {

// The peak under the tallest point from range.Start to range.End, the first of equals, whatever the range's
// type. It is found by evaluating a copy of the 300 points to either side, so that the time does not grow
// with the length of the spectrum, which stays as it is; PeakId is that of the copy. False if there is none:
// no point, no peak, or an evaluation that failed, which alone sets `evalFailed` and fills `error`. Throws
// what MakePartialSpectrum does.
TSLBL_API bool CalcBasePeak(const Spectrum& spectrum, const MZRange& range,
                            const std::vector<CurveEval>& evals, MZPeak& peak, bool& evalFailed,
                            std::wstring& error);

}  // namespace TslBL
