#include <tslbl/records/PeakValues.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

// Six digits are too few for an m/z.
void DescribeX(Archive& ar, const wchar_t* name, double& x) {
  if (ar.Xml() && !ar.Reading()) {
    auto text = ToFullText(x);
    ar(name, text);
  } else {
    ar(name, x);
  }
}

}  // namespace

void DescribePeakTop(Archive& ar, PeakValues& peak) {
  DescribeX(ar, L"CentroidX", peak.CentroidX);
  ar(L"CentroidAmpl", peak.CentroidAmpl);
  ar(L"RelCentroidAmpl", peak.RelCentroidAmpl);
  DescribeX(ar, L"MaxX", peak.MaxX);
  ar(L"MaxAmpl", peak.MaxAmpl);
  ar(L"RelMaxAmpl", peak.RelMaxAmpl);
}

void DescribePeakShape(Archive& ar, PeakValues& peak) {
  ar(L"Area", peak.Area);
  DescribeX(ar, L"Width", peak.Width);
  ar(L"Resolution", peak.Resolution);
  ar(L"Baseline", peak.Baseline);
  ar(L"Signal2Noise", peak.Signal2Noise);
  ar(L"Noise", peak.Noise);
  DescribeX(ar, L"PkStartX", peak.PkStartX);
  ar(L"PkStartAmpl", peak.PkStartAmpl);
  DescribeX(ar, L"PkEndX", peak.PkEndX);
  ar(L"PkEndAmpl", peak.PkEndAmpl);
  DescribeX(ar, L"PkAreaStartX", peak.PkAreaStartX);
  DescribeX(ar, L"PkAreaEndX", peak.PkAreaEndX);
  ar(L"PkAreaIntercept", peak.PkAreaIntercept);
}

}  // namespace TslBL
