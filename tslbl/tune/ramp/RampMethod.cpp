#include <tslbl/tune/ramp/RampMethod.h>

#include <tslbl/records/Archive.h>
#include <tslbl/tune/FieldTable.h>
#include <stdexcept>

namespace TslBL {

void Describe(Archive& ar, RampMethod& method) {
  ar.Version(1, "Unknown RampMethod version.");
  ar.Nested(method.BaseTune);
  ar.List(L"Steps", method.Steps);
  ar.List(L"Evals", method.Evals);
  ar.List(L"PeakFields", method.PeakFields);
  ar.List(L"MZRanges", method.MZRanges);
  ar.List(L"RangeEvals", method.RangeEvals);
  ar.Nested(method.Params);
}

double QRampLensValue(const Tune& tune, TuneField::Id field) {
  if (field == TuneField::Q1Enter) return 0.0;
  if (!TuneField::IsFieldRampable(field)) throw std::runtime_error("Unknown ramp tune field");
  return FieldValue(tune, field).value();
}

}  // namespace TslBL
