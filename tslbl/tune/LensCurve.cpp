#include <tslbl/tune/LensCurve.h>

#include <tslbl/tune/FieldTable.h>

namespace TslBL {

LensCurve::LensCurve(const Tune& tune, TuneField::Id field) {
  const FieldRow* row = FindField(field);
  const auto lens = row != nullptr ? row->Lens() : nullptr;
  if (lens != nullptr && (tune.ControlData.*lens).Type == IOPoint::SingleType) {
    single_ = (tune.ControlData.*lens).Single;
  } else {
    curve_.emplace(tune.Q1CalPts, field);
  }
}

}  // namespace TslBL
