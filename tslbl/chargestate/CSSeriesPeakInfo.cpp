#include <tslbl/chargestate/CSSeriesPeakInfo.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, CSSeriesPeakInfo& peak) {
  ar.Version(1, "Unknown Charge State Series Peak Information version.");
  ar(L"PeakId", peak.PeakId);
  ar(L"MZ", peak.MZ);
  ar(L"Charge", peak.Charge);
  ar(L"IsMonoPeak", peak.IsMonoPeak);
  ar(L"MonoMass", peak.MonoMass);
  ar(L"MassDev", peak.MassDev);
}

}  // namespace TslBL
