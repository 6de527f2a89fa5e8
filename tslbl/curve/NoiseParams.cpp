#include <tslbl/curve/NoiseParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

using AutoAlgs = NoiseParams::AutoAlgs;
using ManAlgs = NoiseParams::ManAlgs;

template <class E>
constexpr std::uint32_t Code(E value) {
  return static_cast<std::uint32_t>(value);
}

constexpr CodeText kAutoAlgs[] = {{Code(AutoAlgs::VFNoise), L"V-F Noise"},
                                  {Code(AutoAlgs::Dispersion), L"Dispersion"},
                                  {Code(AutoAlgs::Median), L"Median"},
                                  {Code(AutoAlgs::LinearFitSD), L"Linear Fit SD"}};
constexpr CodeText kManAlgs[] = {{Code(ManAlgs::PeakToPeak), L"Peak To Peak"},
                                 {Code(ManAlgs::SixTimesSD), L"6 Times SD"}};

}  // namespace

NoiseParams NoiseParams::DefaultMS() { return {}; }

NoiseParams NoiseParams::DefaultIC() {
  NoiseParams p;
  p.AlgAuto = AutoAlgs::VFNoise;
  p.Start = 0.0;
  p.End = 0.0;
  return p;
}

void Describe(Archive& ar, NoiseParams& p) {
  ar.Version(1, "Unknown NoiseParams version.");
  if (const auto element = ar.Element(L"Noise")) {
    ar.Flag(L"Mode", p.Auto, L"Auto", L"Manual");
    ar.Enum(L"AlgAuto", p.AlgAuto, {kAutoAlgs});
    ar(L"SegSize", p.SegSize);
    ar(L"Median", p.Median);
    ar(L"Points", p.Points);
    ar(L"Width", p.Width);
    // Any text but the first form means the second here.
    ar.Enum(L"AlgMan", p.AlgMan, {.rows = kManAlgs, .onMiss = Code(ManAlgs::SixTimesSD)});
    ar(L"Start", p.Start);
    ar(L"End", p.End);
  }
}

}  // namespace TslBL
