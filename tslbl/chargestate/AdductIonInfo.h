#pragma once
// The ion that carries a charge to a molecule. Element "CustomAdductIon".

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>

namespace TslBL {

struct TSLBL_API AdductIonInfo : Record<AdductIonInfo> {
  enum AdductIon : std::uint32_t { Proton = 0, Ammonium = 1, Sodium = 2, Potassium = 3, Custom = 4 };

  // Any value without an ion of its own, Custom too, gives the proton.
  static AdductIonInfo GetStandardAdductIon(AdductIon ion);

  AdductIonInfo() = default;
  AdductIonInfo(const std::wstring& symbol, double monoMass, double avgMass)
      : Symbol(symbol), MonoMass(monoMass), AvgMass(avgMass) {}

  std::wstring Symbol;
  double MonoMass = 0.0;  // monoisotopic mass, with which resolved series are worked out
  double AvgMass = 0.0;   // average mass, for unresolved series
};

TSLBL_API void Describe(Archive& ar, AdductIonInfo& ion);

}  // namespace TslBL
