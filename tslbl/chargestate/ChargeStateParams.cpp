#include <tslbl/chargestate/ChargeStateParams.h>

#include <tslbl/chargestate/SetLimits.h>
#include <tslbl/records/Archive.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/TuneField.h>

namespace TslBL {
namespace {

constexpr CodeText kMethods[] = {{ChargeStateParams::ResAndUnres, L"ResAndUnres"},
                                 {ChargeStateParams::ResolvedOnly, L"Resolved"},
                                 {ChargeStateParams::UnresolvedOnly, L"Unresolved"}};
constexpr CodeText kMZAssigns[] = {{ChargeStateParams::MaxAmplitude, L"MaxAmplitude"},
                                   {ChargeStateParams::Centroid, L"Centroid"}};
constexpr CodeText kPkIntensities[] = {{ChargeStateParams::Amplitude, L"Amplitude"},
                                       {ChargeStateParams::Area, L"Area"}};
constexpr CodeText kAdductIons[] = {{AdductIonInfo::Proton, L"H+"},
                                    {AdductIonInfo::Ammonium, L"NH4+"},
                                    {AdductIonInfo::Sodium, L"Na+"},
                                    {AdductIonInfo::Potassium, L"K+"},
                                    {AdductIonInfo::Custom, L"Custom"}};

// Documents have always been written with a plain flag and read with the text that reports use.
void DescribeRange(Archive& ar, bool& full) {
  if (ar.Xml() && !ar.Reading()) return ar(L"Range", full);
  ar.Flag(L"Range", full, L"Full", L"Partial");
}

}  // namespace

ChargeStateParams::ChargeStateParams() { GetMZLimits(StartMz, EndMz); }

void ChargeStateParams::GetMaxChargeStateGapsLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 0u, max, 10u);
}
void ChargeStateParams::GetNumberSpeciesLimits(std::uint32_t& min, std::uint32_t& max) {
  SetLimits(min, 1u, max, 100u);
}
void ChargeStateParams::GetMZLimits(double& min, double& max) {
  const FieldLimits limits;
  SetLimits(min, limits.QLimits(Probes::ESI, TuneField::MZLow).Min, max,
            limits.QLimits(Probes::ESI, TuneField::MZHi).Max);
}

AdductIonInfo ChargeStateParams::GetAdductIonInfo() const {
  if (AdductIon == AdductIonInfo::Custom) return CustomAdductIon;
  return AdductIonInfo::GetStandardAdductIon(AdductIon);
}

void Describe(Archive& ar, ChargeStateParams& params) {
  ar.Version(1, "Unknown ChargeStateParams version.");
  if (const auto element = ar.Element(L"ChargeState")) {
    DescribeRange(ar, params.FullRange);
    ar(L"StartMz", params.StartMz);
    ar(L"EndMz", params.EndMz);
    ar.Enum(L"Method", params.Method, {kMethods});
    ar.Flag(L"UseOPD", params.UseOPD, L"Yes", L"No");
    ar.Enum(L"MZAssign", params.MZAssign, {kMZAssigns});
    ar.Enum(L"PkIntensity", params.PkIntensity, {kPkIntensities});
    ar.Enum(L"AdductIon", params.AdductIon, {kAdductIons});
    ar.Nested(params.CustomAdductIon);
    ar(L"MaxCSGaps", params.MaxCSGaps);
    ar(L"MaxSpecies", params.MaxSpecies);
    ar.Nested(params.Resolved);
    ar.Nested(params.Unresolved);
  }
}

}  // namespace TslBL
