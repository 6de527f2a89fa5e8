#pragma once
// What a lens of a tune does over m/z: its single value, or its curve through the
// calibration points of the tune.
//
// A value, apart from the tune; evaluations may run on many threads at once.

#include <tslbl/Export.h>
#include <tslbl/tune/Q1FieldConvert.h>
#include <tslbl/tune/Tune.h>
#include <optional>

namespace TslBL {

class TSLBL_API LensCurve {
 public:
  // Throws VexException for a field that is no lens, and for a lens that is to follow m/z and
  // cannot.
  LensCurve(const Tune& tune, TuneField::Id field);

  // Null for a lens of a single value.
  const Q1FieldConvert* QCurve() const { return curve_ ? &*curve_ : nullptr; }
  // As Q1FieldConvert::MZToFieldVal: a curve without points gives 0 cut to the limits, and one
  // that is open at this m/z throws.
  double At(double mz) const { return curve_ ? curve_->MZToFieldVal(mz) : single_; }

 private:
  double single_ = 0.0;
  std::optional<Q1FieldConvert> curve_;
};

}  // namespace TslBL
