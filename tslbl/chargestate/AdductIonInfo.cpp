#include <tslbl/chargestate/AdductIonInfo.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

AdductIonInfo AdductIonInfo::GetStandardAdductIon(AdductIon ion) {
  switch (ion) {
    case Ammonium:
      return {L"NH4+", 18.033826, 18.037986};
    case Sodium:
      return {L"Na+", 22.989221, 22.989221};
    case Potassium:
      return {L"K+", 38.963158, 39.09776};
    default:
      return {L"H+", 1.007276, 1.007398};
  }
}

void Describe(Archive& ar, AdductIonInfo& ion) {
  ar.Version(1, "Unknown AdductIonInfo version.");
  if (const auto element = ar.Element(L"CustomAdductIon")) {
    ar(L"Symbol", ion.Symbol);
    ar(L"MonoMass", ion.MonoMass);
    ar(L"AvgMass", ion.AvgMass);
  }
}

}  // namespace TslBL
