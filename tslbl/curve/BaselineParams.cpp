#include <tslbl/curve/BaselineParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

// "APB Morph" is the name that older documents have for Adaptive.
constexpr CodeText kAlgs[] = {{BaselineParams::VFBaseline, L"V-F Baseline"},
                              {BaselineParams::Adaptive, L"Adaptive"},
                              {BaselineParams::LinearFitSD, L"Linear Fit SD"},
                              {BaselineParams::Adaptive, L"APB Morph"}};

}  // namespace

BaselineParams BaselineParams::DefaultMS() { return {}; }

BaselineParams BaselineParams::DefaultIC() {
  BaselineParams p;
  p.Alg = VFBaseline;
  p.SegSize = 50;
  p.Window = 10;
  return p;
}

void Describe(Archive& ar, BaselineParams& p) {
  ar.Version(1, "Unknown BaselineParams version.");
  if (const auto element = ar.Element(L"Baseline")) {
    ar.Flag(L"Mode", p.Auto, L"Auto", L"Manual");
    ar.Enum(L"Alg", p.Alg, {kAlgs});
    ar(L"SegSize", p.SegSize);
    ar(L"Window", p.Window);
    ar(L"Points", p.Points);
    ar(L"Width", p.Width);
    ar(L"ManVal", p.ManVal);
  }
}

}  // namespace TslBL
