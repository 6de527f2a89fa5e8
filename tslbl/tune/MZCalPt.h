#pragma once
// One point of the m/z calibration: the mass DAC value at which a calibrant is seen.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <string>
#include <utility>

namespace TslBL {

// Points whose m/z and DAC values differ by no more than 1e-6 compare equal.
struct TSLBL_API MZCalPt : Record<MZCalPt> {
  MZCalPt() = default;
  MZCalPt(std::wstring name, double mz, double massDAC) : Name(std::move(name)), MZ(mz), MassDAC(massDAC) {}

  std::wstring Name;
  double MZ = 0.0;
  double MassDAC = 0.0;

  // By m/z alone.
  friend bool operator<(const MZCalPt& a, const MZCalPt& b) { return a.MZ < b.MZ; }
};
TSLBL_API void Describe(Archive& ar, MZCalPt& point);

}  // namespace TslBL
