// The rules of a tune, one check each.

#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/LensCurve.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <cmath>

namespace TslBL {
namespace {

using ErrTypes = DevTuneRules::ErrTypes;

bool IsOutside(double value, double low, double high) { return value < low || value > high; }

std::wstring OutOfRange(const std::wstring& label, double low, double high) {
  return FillMessage(kOutOfRange, label, low, high);
}

struct Ends {
  double low;
  double high;
};

// A lens at both ends of the range, or twice at the centre of a SIM.
Ends EndsOf(const Tune& tune, TuneField::Id field) {
  const LensCurve lens(tune, field);
  // One that should follow m/z and has no points does nothing, and counts as 0 volts.
  if (lens.QCurve() != nullptr && lens.QCurve()->Empty()) return {0.0, 0.0};
  const Control& control = tune.ControlData;
  const double low = lens.At(control.MZLow);
  return {low, control.Type == Control::Scan ? lens.At(control.MZHi) : low};
}

}  // namespace

Limits DevTuneRules::LimitsOf(TuneField::Id field) const {
  return FieldLimits().QLimits(Source.Type, static_cast<int>(field));
}

ErrTypes DevTuneRules::CheckLimits(Probes::ProbeTypes probe, TuneField::Id field, double value,
                                   const std::wstring& label, std::wstring& lastError) {
  const Limits limits = FieldLimits().QLimits(probe, static_cast<int>(field));
  if (!IsOutside(value, limits.Min, limits.Max)) return NoError;
  lastError = OutOfRange(label, limits.Min, limits.Max);
  return Error;
}

ErrTypes DevTuneRules::CheckLimits(TuneField::Id field, double value) const {
  const Limits limits = LimitsOf(field);
  return CheckLimits(field, value, limits.Min, limits.Max);
}

ErrTypes DevTuneRules::CheckLimits(TuneField::Id field, double value, double low, double high) const {
  // Of a number that names no field no value is good: its missing name throws.
  if (TuneField::IsField(field) && !IsOutside(value, low, high)) return NoError;
  LastError = OutOfRange(TuneField::FieldToString(field), low, high);
  return Error;
}

ErrTypes DevTuneRules::CheckIOPoint(TuneField::Id field, const IOPoint& point) const {
  ErrTypes result = CheckLimits(TuneField::IOPointType, point.Type);
  if (result == NoError && point.Type == IOPoint::SingleType) {
    const Limits limits = LimitsOf(field);
    if (IsOutside(point.Single, limits.Min, limits.Max)) {
      LastError = OutOfRange(TslLoadString(ModuleHandle(), kSingleValue), limits.Min, limits.Max);
      result = Error;
    }
  } else if (result == NoError && point.Type == IOPoint::CalibratedType) {
    Pairs pairs;
    QFieldQ1CalPts(field, pairs);
    if (pairs.size() < 2) {
      Fail(kTooFewQ1CalPts);
      result = Warning;
    }
  }
  if (result != NoError) LastError = FillText(L"%s - %s", TuneField::FieldToString(field), LastError);
  return result;
}

ErrTypes DevTuneRules::CheckSimSpanRange(double span) const {
  const bool isOdd = Truncate<std::int32_t>(span * 10.0) % 2 != 0;
  return IsOutside(span, 0.0, 2.0) || isOdd ? Fail(kBadSpan) : NoError;
}

ErrTypes DevTuneRules::CheckCapExitSkimmer() const {
  constexpr double kMost = 370.0;
  const Ends capExit = EndsOf(*this, TuneField::CapExit);
  const Ends skimmer = EndsOf(*this, TuneField::Skimmer);
  const bool far = capExit.low - skimmer.low > kMost || capExit.high - skimmer.high > kMost;
  return far ? Fail(kCapExitFarFromSkimmer) : NoError;
}

ErrTypes DevTuneRules::CheckSyringe(const Syringe& syringe) const {
  double low = 0.0;
  double high = 0.0;
  QLimitsSyringe(TuneField::Diameter, low, high);
  // A diameter that is no number is none.
  const double diameter = std::isnan(syringe.Model.Diameter) ? -1.0 : syringe.Model.Diameter;
  if (CheckLimits(TuneField::Diameter, diameter, low, high) == Error) return Error;
  QLimitsSyringe(TuneField::FlowRate, low, high);
  return CheckLimits(TuneField::FlowRate, syringe.FlowRate, low, high);
}

}  // namespace TslBL
