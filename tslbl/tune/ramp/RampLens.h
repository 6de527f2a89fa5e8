#pragma once
// A lens that a ramp walks through a series of values.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/TuneField.h>

namespace TslBL {

// From start to end by the step, which is given without a sign. A new one is of a field that no ramp can
// walk.
struct TSLBL_API RampLens : SerialRecord<RampLens> {
  TuneField::Id Field = TuneField::PolarityType;
  double Start = 0.0;
  double End = 0.0;
  double Step = 0.0;
};
TSLBL_API void Describe(Archive& ar, RampLens& lens);

}  // namespace TslBL
