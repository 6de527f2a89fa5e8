#pragma once
// What the tests of the tune's rules share.

#include <gtest/gtest.h>

#include <tslbl/tune/rules/DevTuneRules.h>
#include <cwchar>
#include <string>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace tests {

using ErrTypes = DevTuneRules::ErrTypes;

inline constexpr ErrTypes kNoError = DevTuneRules::NoError;
inline constexpr ErrTypes kWarning = DevTuneRules::Warning;
inline constexpr ErrTypes kError = DevTuneRules::Error;

inline constexpr Probes::ProbeTypes kProbes[] = {Probes::ESI, Probes::APCI, Probes::LowFlowESI};

// A default tune without marks.
inline DevTuneRules Unmarked(Probes::ProbeTypes probe = Probes::ESI) {
  DevTuneRules rules(probe);
  rules.ClearModified();
  return rules;
}

inline std::wstring LastErrorOf(DevTuneRules& rules) {
  std::wstring text = L"not handed over";
  rules.QLastError(text);
  return text;
}

// Of all fields, to the bit.
inline std::string TuneBytes(const Tune& tune) { return ToBytes(tune); }

inline std::wstring OutOfRange(const std::wstring& label, double low, double high) {
  wchar_t range[80];
  std::swprintf(range, std::size(range), L"%0.2f to %0.2f.", low, high);
  return label + L" is out of range.  Valid values are " + range;
}

inline IOPoint LensOf(IOPoint::Types type, double single = 0.0) {
  IOPoint lens = SingleLens(single);
  lens.Type = type;
  return lens;
}

inline Q1CalPt Calibrant(double mz, std::map<TuneField::Id, double> fields = {}) {
  Q1CalPt point(mz, L"");
  point.Fields = std::move(fields);
  return point;
}

// Whether the change is refused with this text, the tune and its mark as they were.
template <class Change>
void ExpectRefused(DevTuneRules rules, Change change, const std::wstring& text) {
  const std::string before = TuneBytes(rules);
  const bool modified = rules.IsModified();
  EXPECT_EQ(change(rules), kError);
  EXPECT_EQ(LastErrorOf(rules), text);
  EXPECT_EQ(TuneBytes(rules), before) << "a refusal changed the tune";
  EXPECT_EQ(rules.IsModified(), modified);
}

// Whether the change is accepted without a text and makes the tune `expected`; done again,
// it changes nothing.
template <class Change>
void ExpectAccepted(DevTuneRules rules, Change change, const Tune& expected) {
  rules.ClearModified();
  const bool changes = TuneBytes(rules) != TuneBytes(expected);
  EXPECT_EQ(change(rules), kNoError);
  EXPECT_EQ(LastErrorOf(rules), L"");
  EXPECT_EQ(rules.IsModified(), changes);
  EXPECT_EQ(TuneBytes(rules), TuneBytes(expected));
  rules.ClearModified();
  EXPECT_EQ(change(rules), kNoError);
  EXPECT_FALSE(rules.IsModified()) << "nothing changed";
  EXPECT_EQ(TuneBytes(rules), TuneBytes(expected));
}

}  // namespace tests
