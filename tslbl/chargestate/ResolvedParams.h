#pragma once
// Parameters of the resolved method of charge state deconvolution, whose peaks are isotopes. Element
// "Resolved". The limits are for forms that a user fills in; nothing is held against them.

#include <tslbl/Export.h>
#include <tslbl/chargestate/AvgMoleculeInfo.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API ResolvedParams : Record<ResolvedParams> {
  enum MMFunctions : std::uint32_t { Average = 0, WeightedAvg = 1 };
  enum ScoreFunctions : std::uint32_t { SumDev = 0, CrossCorr = 1 };

  static void GetMinScoreLimits(double& min, double& max);
  static void GetAtomProbThreshLimits(double& min, double& max);
  static void GetMoleProbThreshLimits(double& min, double& max);
  static void GetMaxIsotopeGapsLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetMaxChargeStateLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetChargeStateAccuracyLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetMZAccurayLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetResolutionLimits(std::uint32_t& min, std::uint32_t& max);
  static void GetMinimumSNLimits(std::uint32_t& min, std::uint32_t& max);

  // The average molecule in use.
  AvgMoleculeInfo GetAvgMoleculeInfo() const;

  MMFunctions MMFunction = Average;       // how charge states make one monoisotopic mass
  ScoreFunctions ScoreFunction = SumDev;  // sum of deviations, or cross-correlation
  double MinScore = 0.6;                  // least score of an isotope pattern
  AvgMoleculeInfo::AvgMolecule AvgMolecule = AvgMoleculeInfo::Averagine;
  AvgMoleculeInfo CustomAvgMole;       // in use if AvgMolecule is Custom
  double AtomProbThresh = 0.000001;    // isotopes of an element that are rarer are left out
  double MoleProbThresh = 0.000001;    // the same of a molecule
  std::uint32_t MaxIsoGaps = 0;        // largest gap in an isotope series
  std::uint32_t MaxCS = 3;             // largest charge state
  std::uint32_t CsAccuracy = 1000;     // charge state accuracy
  std::uint32_t MinResolution = 1000;  // lowest resolution
  std::uint32_t MaxResolution = 5000;  // highest resolution
  std::uint32_t MinSN = 3;             // least signal to noise
  std::uint32_t MzAccuracy = 1000;     // m/z accuracy
};

TSLBL_API void Describe(Archive& ar, ResolvedParams& params);

}  // namespace TslBL
