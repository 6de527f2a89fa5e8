#pragma once
// A tuning experiment: a tune, the ramps that are run with it, how their spectra are evaluated, and how the
// best value is chosen. MethodRules::Create makes an acquisition method of a ramp, RampResults.h chooses, and
// DevTuneRules::WRampResults stores what was found. Bytes only.

#include <tslbl/Export.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/records/MZPeakField.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/Tune.h>
#include <tslbl/tune/ramp/RampAlgorithmParams.h>
#include <tslbl/tune/ramp/RampStep.h>
#include <vector>

namespace TslBL {

struct TSLBL_API RampMethod : SerialRecord<RampMethod> {
  Tune BaseTune;
  std::vector<RampStep> Steps;
  std::vector<CurveEval> Evals;
  std::vector<MZPeakField> PeakFields;
  std::vector<MZRange> MZRanges;
  std::vector<CurveEval> RangeEvals;
  RampAlgorithmParams Params;
};
TSLBL_API void Describe(Archive& ar, RampMethod& method);

// The value that a field which ramps can walk has in a tune, of a lens its single value; 0 of the entrance
// lens. Throws std::runtime_error "Unknown ramp tune field" for any other field.
TSLBL_API double QRampLensValue(const Tune& tune, TuneField::Id field);

}  // namespace TslBL
