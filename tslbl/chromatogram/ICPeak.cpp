#include <tslbl/chromatogram/ICPeak.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
void Describe(Archive& ar, ICPeak& peak) {
  ar.Version(1, "Unknown ICPeak version.");
  ar(L"CurveId", peak.CurveId);
  ar(L"PeakId", peak.PeakId);
  DescribePeakTop(ar, peak);
  DescribePeakShape(ar, peak);
  ar.List(L"SpecIds", peak.SpecIds, DescribeId);
}

}  // namespace TslBL
