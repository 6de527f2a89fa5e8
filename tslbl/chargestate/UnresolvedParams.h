#pragma once
// Parameters of the unresolved method of charge state deconvolution, each of whose peaks is a whole isotope
// pattern. Element "Unresolved". The limits are for forms that a user fills in; nothing is held against them.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API UnresolvedParams : Record<UnresolvedParams> {
  static void GetMinChargeStateLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetMZAccurayLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetDeconMassLimits(std::uint32_t& min, std::uint32_t& max);

  std::uint32_t MinCS = 5;             // fewest charge states in a series
  std::uint32_t MzAccuracy = 1000;     // m/z accuracy
  std::uint32_t MinDeconMass = 1000;   // lowest mass of a molecule
  std::uint32_t MaxDeconMass = 20000;  // highest mass
};

TSLBL_API void Describe(Archive& ar, UnresolvedParams& params);

}  // namespace TslBL
