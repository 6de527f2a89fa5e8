#pragma once
// The rules of a tune, held against any tune, for the fuzz targets.

#include <fuzz/Records.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <string>

namespace fuzz {

using TslBL::DevTuneRules;

inline std::wstring LastErrorOf(DevTuneRules& rules) {
  std::wstring text;
  rules.QLastError(text);
  return text;
}

// Whether the tune is accepted. Without an answer, or with a fault, it is not.
inline bool IsValid(DevTuneRules& rules) {
  const std::string before = ToBytes(rules);
  LastErrorOf(rules);
  DevTuneRules::ErrTypes result = DevTuneRules::Error;
  const bool answered = Accepts([&] { result = rules.Validate(); });
  const bool accepted = result == DevTuneRules::NoError;
  Require(!answered || accepted || (result == DevTuneRules::Error && !LastErrorOf(rules).empty()),
          "an invalid tune has a text");
  Require(rules.QFaults().empty() == accepted, "a tune is valid if it has no faults");
  Require(ToBytes(rules) == before, "a check leaves the tune");
  return accepted;
}

// A change that is refused, or that throws, leaves the tune and says why.
template <class Change>
void TryChange(DevTuneRules& rules, Change change) {
  const std::string before = ToBytes(rules);
  const bool modified = rules.IsModified();
  LastErrorOf(rules);
  DevTuneRules::ErrTypes result = DevTuneRules::NoError;
  const bool answered = Accepts([&] { result = change(rules); });
  if (answered && result != DevTuneRules::Error) return;
  Require(ToBytes(rules) == before && rules.IsModified() == modified, "a refusal leaves the tune");
  Require(!answered || !LastErrorOf(rules).empty(), "a refusal has a text");
}

// Its own values, written to it as an application would.
inline void WriteItsOwn(DevTuneRules& rules) {
  using R = DevTuneRules;
  TryChange(rules, [](R& r) { return r.WCylinder(r.QCylinder()); });
  TryChange(rules, [](R& r) { return r.WCoronaVoltage(r.QEndPlate()); });
  TryChange(rules, [](R& r) { return r.WEndPlate(r.QCapEnter()); });
  TryChange(rules, [](R& r) { return r.WApciVapTemp(r.QDryGasTemp()); });
  TryChange(rules, [](R& r) { return r.WApciAuxGas(r.QNeb1GasPres()); });
  TryChange(rules, [](R& r) { return r.WApciNebGas(!r.QApciNebGas()); });
  TryChange(rules, [](R& r) { return r.WMZStepSize(r.QMZStepSize()); });
  TryChange(rules, [](R& r) { return r.WSamplesPerMass(r.QSamplesPerMass()); });
  TryChange(rules, [](R& r) { return r.WSimWithSpan(r.QSimWithSpan()); });
  TryChange(rules, [](R& r) { return r.WMZLow(r.QMZHi()); });
  TryChange(rules, [](R& r) { return r.WCapExit(r.QSkimmer()); });
  TryChange(rules, [](R& r) { return r.WQ1Resolution(r.QCapExit()); });
  TryChange(rules, [](R& r) { return r.WMZCalPts(r.QMZCalPts()); });
  TryChange(rules, [](R& r) { return r.WSyringeFlow(r.QPulseCountDelay()); });
  TryChange(rules, [](R& r) { return r.WSyringeCustom(r.QMZStepSize()); });
  TryChange(rules, [](R& r) { return r.AddQ1CalPt(r.QMZLow(), r.QName()); });
  TryChange(rules, [](R& r) { return r.ChangeQ1CalPtMZ(r.QMZLow(), r.QMZHi()); });
  R::Pairs curve;
  rules.QFieldQ1CalPts(TslBL::TuneField::Skimmer, curve);
  rules.WFieldQ1CalPts(TslBL::TuneField::CapExit, curve);
  for (std::uint32_t field = 0; field <= TslBL::TuneField::kFieldCount; ++field)
    Accepts([&] { rules.WRampResults(static_cast<TslBL::TuneField::Id>(field), rules.QMZLow(), {}); });
  Accepts([&] { rules.CalculateInitialSettlingDelay(); });
}

inline void TurnTwice(DevTuneRules& rules) {
  const auto polarity = rules.QPolarityType();
  const TslBL::Tune copy = rules;
  const bool holdsNaN = !(copy == static_cast<const TslBL::Tune&>(rules));
  if (holdsNaN || polarity > TslCommon::PolarityNegative) return;
  const std::string before = ToBytes(rules);
  rules.WPolarityType(polarity == TslCommon::PolarityPositive ? TslCommon::PolarityNegative
                                                              : TslCommon::PolarityPositive);
  rules.WPolarityType(polarity);
  Require(ToBytes(rules) == before, "a tune that is turned twice is as it was");
}

inline void RequireStaysValid(DevTuneRules& rules) {
  if (!IsValid(rules)) return;
  TslBL::Tune read;
  Require(AcceptsBytes(ToBytes(rules), read), "a valid tune is read");
  DevTuneRules again(read);
  Require(IsValid(again), "a valid tune that was written is valid");
}

// A tune as it comes from a file: a lens that was a function there is a curve in bytes.
inline void CheckTuneRules(const TslBL::Tune& tune) {
  TslBL::Tune stored;
  Require(AcceptsBytes(ToBytes(tune), stored), "a written tune is read");
  DevTuneRules rules(stored);
  RequireStaysValid(rules);
  TurnTwice(rules);
  WriteItsOwn(rules);
}

}  // namespace fuzz
