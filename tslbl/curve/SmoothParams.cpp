#include <tslbl/curve/SmoothParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kAlgs[] = {{SmoothParams::Mean, L"Mean"},
                              {SmoothParams::Median, L"Median"},
                              {SmoothParams::SavitzkyGolay, L"Savitzky-Golay"},
                              {SmoothParams::Gaussian, L"Gaussian"}};
constexpr CodeText kStepTransitions[] = {{SmoothParams::Smooth, L"Smooth"},
                                         {SmoothParams::Staggered, L"Staggered"}};

void DescribeStep(Archive& ar, SmoothStep& s) {
  if (const auto element = ar.Element(L"Step")) {
    ar.Attribute(L"Value", s.Value);
    ar.Attribute(L"Size", s.Size);
  }
}

}  // namespace

SmoothParams SmoothParams::DefaultMS() { return {}; }

SmoothParams SmoothParams::DefaultIC() {
  SmoothParams p;
  p.Steps.front().Value = 0.0;
  return p;
}

void Describe(Archive& ar, SmoothParams& p) {
  ar.Version(1, "Unknown SmoothParams version.");
  const auto element = ar.Element(L"Smooth");
  if (!element) return;
  // Reports show what matters first: the algorithm.
  if (ar.Dumping()) ar.Enum(L"Alg", p.Alg, {kAlgs});
  if (ar.Dumping()) ar(L"Order", p.Order);
  ar(L"Passes", p.Passes);
  if (!ar.Dumping()) {
    ar(L"Order", p.Order);
    ar.Enum(L"Alg", p.Alg, {kAlgs});
    ar.Enum(L"StepTrans", p.StepTrans, {kStepTransitions});
  }
  ar.List(L"Steps", p.Steps, DescribeStep);
  if (ar.Dumping()) ar.Enum(L"StepTrans", p.StepTrans, {kStepTransitions});
}

}  // namespace TslBL
