#pragma once
// One row of the Q1 step calibration: the values of some lenses at the m/z of a calibrant.
// A row need not carry every field that can follow m/z.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/TuneField.h>
#include <map>
#include <string>
#include <utility>

namespace TslBL {

// Points whose m/z differ by no more than 1e-6 compare equal; names and fields exactly.
struct TSLBL_API Q1CalPt : Record<Q1CalPt> {
  Q1CalPt() = default;
  Q1CalPt(double mz, std::wstring name) : Name(std::move(name)), MZ(mz) {}

  std::wstring Name;
  double MZ = 0.0;
  std::map<TuneField::Id, double> Fields;

  // Removes every entry but that of the capillary exit.
  void KeepOnlyCapExit();
  // Sets the capillary exit's entry, if there is one.
  void ReplaceAnyCapExit(double value);
};
TSLBL_API void Describe(Archive& ar, Q1CalPt& point);

}  // namespace TslBL
