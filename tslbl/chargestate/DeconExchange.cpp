#include <tslbl/chargestate/DeconExchange.h>

namespace TslBL {

ResPrefs MakeResPrefs(const ChargeStateParams& params) {
  const ResolvedParams& resolved = params.Resolved;
  return {
      .snCutoff = static_cast<double>(resolved.MinSN),
      .resLow = static_cast<double>(resolved.MinResolution),
      .resHigh = static_cast<double>(resolved.MaxResolution),
      .minPatternScore = resolved.MinScore,
      .zMax = resolved.MaxCS,
      .maxGaps = resolved.MaxIsoGaps,
      .tolerance = static_cast<double>(resolved.MzAccuracy),
      .adductMass = params.GetAdductIonInfo().MonoMass,
      .csfTolerance = static_cast<double>(resolved.CsAccuracy),
      .csfAllowableGaps = params.MaxCSGaps,
      .scoreFunct = resolved.ScoreFunction,
      .mmCalcFunc = resolved.MMFunction,
      .atomicProbability = resolved.AtomProbThresh,
      .molecularProbability = resolved.MoleProbThresh,
      .csfMaxFamily = params.MaxSpecies,
      .formula = resolved.GetAvgMoleculeInfo().Formula,
  };
}

UnresPrefs MakeUnresPrefs(const ChargeStateParams& params) {
  const UnresolvedParams& unresolved = params.Unresolved;
  return {
      .minMass = unresolved.MinDeconMass,
      .maxMass = unresolved.MaxDeconMass,
      .chargeCarrierMass = params.GetAdductIonInfo().AvgMass,
      .minSeriesSize = unresolved.MinCS,
      .maxSeries = params.MaxSpecies,
      .isotopicGaps = params.MaxCSGaps,
      .massAccuracy = static_cast<double>(unresolved.MzAccuracy),
  };
}

}  // namespace TslBL
