#include <tslbl/chargestate/ResolvedParams.h>

#include <tslbl/chargestate/SetLimits.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kMMFunctions[] = {{ResolvedParams::Average, L"Average"},
                                     {ResolvedParams::WeightedAvg, L"WeightedAvg"}};
constexpr CodeText kScoreFunctions[] = {{ResolvedParams::SumDev, L"SumDev"},
                                        {ResolvedParams::CrossCorr, L"CrossCorr"}};
constexpr CodeText kAvgMolecules[] = {{AvgMoleculeInfo::Averagine, L"Averagine"},
                                      {AvgMoleculeInfo::DNAgine, L"DNAgine"},
                                      {AvgMoleculeInfo::RNAgine, L"RNAgine"},
                                      {AvgMoleculeInfo::Custom, L"Custom"}};

}  // namespace

void ResolvedParams::GetMinScoreLimits(double& min, double& max) { SetLimits(min, 0.0, max, 1.0); }
void ResolvedParams::GetAtomProbThreshLimits(double& min, double& max) { SetLimits(min, 0.0, max, 1.0); }
void ResolvedParams::GetMoleProbThreshLimits(double& min, double& max) { SetLimits(min, 0.0, max, 1.0); }
void ResolvedParams::GetMaxIsotopeGapsLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 0u, max, 3u);
}
void ResolvedParams::GetMaxChargeStateLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 1u, max, 100u);
}
void ResolvedParams::GetChargeStateAccuracyLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 1u, max, 10000u);
}
void ResolvedParams::GetMZAccurayLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 1u, max, 10000u);
}
void ResolvedParams::GetResolutionLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 1000u, max, 65000u);
}
void ResolvedParams::GetMinimumSNLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 1u, max, 100u);
}

AvgMoleculeInfo ResolvedParams::GetAvgMoleculeInfo() const {
  if (AvgMolecule == AvgMoleculeInfo::Custom) return CustomAvgMole;
  return AvgMoleculeInfo::GetStandardAvgMolecule(AvgMolecule);
}

void Describe(Archive& ar, ResolvedParams& params) {
  ar.Version(1, "Unknown Resolved version.");
  if (const auto element = ar.Element(L"Resolved")) {
    ar.Enum(L"MMFunction", params.MMFunction, {kMMFunctions});
    ar.Enum(L"ScoreFunction", params.ScoreFunction, {kScoreFunctions});
    ar(L"MinScore", params.MinScore);
    ar.Enum(L"AvgMolecule", params.AvgMolecule, {kAvgMolecules});
    ar.Nested(params.CustomAvgMole);
    ar(L"AtomProbThresh", params.AtomProbThresh);
    ar(L"MoleProbThresh", params.MoleProbThresh);
    ar(L"MaxIsoGaps", params.MaxIsoGaps);
    ar(L"MaxCS", params.MaxCS);
    ar(L"CsAccuracy", params.CsAccuracy);
    ar(L"MinResolution", params.MinResolution);
    ar(L"MaxResolution", params.MaxResolution);
    ar(L"MinSN", params.MinSN);
    ar(L"MzAccuracy", params.MzAccuracy);
  }
}

}  // namespace TslBL
