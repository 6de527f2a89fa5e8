#pragma once
// Parameters of charge state deconvolution of which no field has its default.

#include <tslbl/chargestate/ChargeStateParams.h>

namespace tests {

using namespace TslBL;

inline AdductIonInfo SampleAdductIon() { return {L"Li+", 7.015455, 6.9385}; }
inline AvgMoleculeInfo SampleAvgMolecule() { return {L"Sugar", L"C6 H10 O5"}; }

inline ResolvedParams SampleResolved() {
  ResolvedParams p;
  p.MMFunction = ResolvedParams::WeightedAvg;
  p.ScoreFunction = ResolvedParams::CrossCorr;
  p.MinScore = 0.75;
  p.AvgMolecule = AvgMoleculeInfo::RNAgine;
  p.CustomAvgMole = SampleAvgMolecule();
  p.AtomProbThresh = 0.0025;
  p.MoleProbThresh = 0.005;
  p.MaxIsoGaps = 2;
  p.MaxCS = 20;
  p.CsAccuracy = 1001;
  p.MinResolution = 2002;
  p.MaxResolution = 6003;
  p.MinSN = 4;
  p.MzAccuracy = 1005;
  return p;
}

inline UnresolvedParams SampleUnresolved() {
  UnresolvedParams p;
  p.MinCS = 6;
  p.MzAccuracy = 1007;
  p.MinDeconMass = 1008;
  p.MaxDeconMass = 50009;
  return p;
}

inline ChargeStateParams SampleChargeStateParams() {
  ChargeStateParams p;
  p.FullRange = false;
  p.StartMz = 400.5;
  p.EndMz = 1600.25;
  p.Method = ChargeStateParams::UnresolvedOnly;
  p.UseOPD = true;
  p.MZAssign = ChargeStateParams::Centroid;
  p.PkIntensity = ChargeStateParams::Area;
  p.AdductIon = AdductIonInfo::Custom;
  p.CustomAdductIon = SampleAdductIon();
  p.MaxCSGaps = 3;
  p.MaxSpecies = 11;
  p.Resolved = SampleResolved();
  p.Unresolved = SampleUnresolved();
  return p;
}

}  // namespace tests
