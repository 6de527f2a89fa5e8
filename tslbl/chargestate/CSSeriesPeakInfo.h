#pragma once
// One peak of a charge-state series.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API CSSeriesPeakInfo : SerialRecord<CSSeriesPeakInfo> {
  std::uint32_t PeakId = 0;  // spectrum peak id, as in spectrum/OverlappedCurve.h
  double MZ = 0.0;
  std::uint32_t Charge = 0;  // which it stands for in this series
  bool IsMonoPeak = false;   // the monoisotopic peak of its charge
  double MonoMass = 0.0;     // monoisotopic mass, on the monoisotopic peak alone
  double MassDev = 0.0;      // deviation of its mass, on the monoisotopic peak alone
};

TSLBL_API void Describe(Archive& ar, CSSeriesPeakInfo& peak);

}  // namespace TslBL
