#pragma once
// Parameters of charge state deconvolution: which peaks it works on, by which of its two methods, and which
// ion carries the charge. Element "ChargeState". The limits are for forms that a user fills in; nothing is
// held against them.

#include <tslbl/Export.h>
#include <tslbl/chargestate/AdductIonInfo.h>
#include <tslbl/chargestate/ResolvedParams.h>
#include <tslbl/chargestate/UnresolvedParams.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API ChargeStateParams : Record<ChargeStateParams> {
  enum Methods : std::uint32_t { ResAndUnres = 0, ResolvedOnly = 1, UnresolvedOnly = 2 };
  enum MZAssigns : std::uint32_t { MaxAmplitude = 0, Centroid = 1 };
  enum PkIntensities : std::uint32_t { Amplitude = 0, Area = 1 };

  // The range is that of the instrument: Low m/z to High m/z of tunes for ESI.
  ChargeStateParams();

  static void GetMaxChargeStateGapsLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetNumberSpeciesLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetMZLimits(double& min, double& max);

  // The ion in use.
  AdductIonInfo GetAdductIonInfo() const;

  // The whole spectrum, or StartMz to EndMz. A document that holds "Full" has it true; it is written as
  // "true" or "false", both of which are read as false, so that the range then stands for itself.
  bool FullRange = true;
  double StartMz = 0.0;
  double EndMz = 0.0;
  Methods Method = ResAndUnres;
  bool UseOPD = false;                // take overlap peaks in the place of the data peaks that they stand for
  MZAssigns MZAssign = MaxAmplitude;  // the m/z of a peak: of its maximum, or its centroid
  PkIntensities PkIntensity = Amplitude;  // how strong a peak is: its amplitude, or its area
  AdductIonInfo::AdductIon AdductIon = AdductIonInfo::Proton;
  AdductIonInfo CustomAdductIon;  // in use if AdductIon is Custom
  std::uint32_t MaxCSGaps = 1;    // largest gap in the charge states of a series
  std::uint32_t MaxSpecies = 10;  // largest number of species
  ResolvedParams Resolved;
  UnresolvedParams Unresolved;
};

TSLBL_API void Describe(Archive& ar, ChargeStateParams& params);

}  // namespace TslBL
