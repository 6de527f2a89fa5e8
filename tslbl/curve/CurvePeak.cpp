#include <tslbl/curve/CurvePeak.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

// x values keep their full precision: six digits are too few for an m/z.
void DescribeX(Archive& ar, const wchar_t* name, double& x) {
  if (ar.Xml() && !ar.Reading()) {
    auto text = ToFullText(x);
    ar(name, text);
  } else {
    ar(name, x);
  }
}

}  // namespace

void Describe(Archive& ar, CurvePeak& p) {
  const auto element = ar.Element(L"Peak");
  if (!element) return;
  DescribeX(ar, L"CentroidX", p.CentroidX);
  ar(L"CentroidAmpl", p.CentroidAmpl);
  ar(L"RelCentroidAmpl", p.RelCentroidAmpl);
  DescribeX(ar, L"MaxX", p.MaxX);
  ar(L"MaxAmpl", p.MaxAmpl);
  ar(L"RelMaxAmpl", p.RelMaxAmpl);
  ar(L"Area", p.Area);
  DescribeX(ar, L"Width", p.Width);
  ar(L"Resolution", p.Resolution);
  ar(L"Baseline", p.Baseline);
  ar(L"Signal2Noise", p.Signal2Noise);
  ar(L"Noise", p.Noise);
  DescribeX(ar, L"PkStartX", p.PkStartX);
  ar(L"PkStartAmpl", p.PkStartAmpl);
  DescribeX(ar, L"PkEndX", p.PkEndX);
  ar(L"PkEndAmpl", p.PkEndAmpl);
  DescribeX(ar, L"PkAreaStartX", p.PkAreaStartX);
  DescribeX(ar, L"PkAreaEndX", p.PkAreaEndX);
  ar(L"PkAreaIntercept", p.PkAreaIntercept);
}

}  // namespace TslBL
