#include <tslbl/records/OPDParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kFittingFuncRows[] = {
    {OPDParams::MarquardtLevenberg, L"MarquardtLevenberg"},
    {OPDParams::HookeJeeves, L"HookeJeeves"},
};
constexpr Codes kFittingFuncs{.rows = kFittingFuncRows, .onMiss = OPDParams::HookeJeeves};

void DescribeRange(Archive& ar, OPDRange& range) {
  if (const auto element = ar.Element(L"Range")) {
    ar.Attribute(L"Enable", range.Enable);
    ar.Attribute(L"LowMZ", range.LowMZ);
    ar.Attribute(L"HighMZ", range.HighMZ);
  }
}

}  // namespace

void Describe(Archive& ar, OPDParams& params) {
  ar.Version(1, "Unknown OPDParams version.");
  if (const auto element = ar.Element(L"OPD")) {
    ar(L"FullRange", params.FullRange);
    ar.List(L"Ranges", params.Ranges, DescribeRange);
    ar(L"MinAmplPercentCmnEndPt", params.MinAmplPercentCmnEndPt);
    ar(L"ResolutionThreshold", params.ResolutionThreshold);
    ar(L"MinDeltaCentroidPkMax", params.MinDeltaCentroidPkMax);
    ar(L"NumSmoothPts", params.NumSmoothPts);
    ar(L"MinPeakAmplitude", params.MinPeakAmplitude);
    ar(L"MaxPeaks", params.MaxPeaks);
    ar.Enum(L"FittingFunc", params.FittingFunc, kFittingFuncs);
    ar(L"ViewResults", params.ViewResults);
    ar(L"SingleGroup", params.SingleGroup);
  }
}

}  // namespace TslBL
