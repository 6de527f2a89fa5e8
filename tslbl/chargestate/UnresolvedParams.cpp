#include <tslbl/chargestate/UnresolvedParams.h>

#include <tslbl/chargestate/SetLimits.h>
#include <tslbl/records/Archive.h>

namespace TslBL {

void UnresolvedParams::GetMinChargeStateLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 2u, max, 10u);
}
void UnresolvedParams::GetMZAccurayLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 1u, max, 10000u);
}
void UnresolvedParams::GetDeconMassLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 100u, max, 500000u);
}

void Describe(Archive& ar, UnresolvedParams& params) {
  ar.Version(1, "Unknown Unresolved version.");
  if (const auto element = ar.Element(L"Unresolved")) {
    ar(L"MinCS", params.MinCS);
    ar(L"MzAccuracy", params.MzAccuracy);
    ar(L"MinDeconMass", params.MinDeconMass);
    ar(L"MaxDeconMass", params.MaxDeconMass);
  }
}

}  // namespace TslBL
