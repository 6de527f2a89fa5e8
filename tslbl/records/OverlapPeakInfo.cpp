#include <tslbl/records/OverlapPeakInfo.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, OverlapPeakInfo& peak) {
  ar.Version(1, "Unknown OverlapPeakInfo version.");
  ar(L"GroupId", peak.GroupId);
  ar(L"DataPeakId", peak.DataPeakId);
  ar(L"Position", peak.Position);
  ar(L"Fit5", peak.Fit5);
  ar(L"Baseline", peak.Baseline);
  ar(L"Height", peak.Height);
  ar(L"Fit4", peak.Fit4);
  ar(L"FWHM", peak.FWHM);
  ar(L"Fit6", peak.Fit6);
}

}  // namespace TslBL
