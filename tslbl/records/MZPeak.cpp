#include <tslbl/records/MZPeak.h>

#include <tslbl/records/Archive.h>
#include <stdexcept>

namespace TslBL {
namespace {

[[noreturn]] void ThrowUnknownField() { throw std::runtime_error("Unknown MZPeakField type"); }

void WriteReported(double& reported, double& centroid, double& maximum, double value) {
  (reported == centroid ? centroid : maximum) = value;
  reported = value;
}

}  // namespace

void Describe(Archive& ar, MZPeak& peak) {
  ar.Version(2, "Unknown MZPeak version.", 2);
  ar(L"Kind", peak.Kind);
  ar(L"CurveId", peak.CurveId);
  ar(L"PeakId", peak.PeakId);
  DescribePeakTop(ar, peak);
  ar(L"Mass", peak.Mass);
  ar(L"Ampl", peak.Ampl);
  DescribePeakShape(ar, peak);
  ar.Nested(peak.CSSeriesRef);
  ar(L"CSValue1", peak.CSValue1);
  ar(L"CSValue2", peak.CSValue2);
  ar(L"CSValue3", peak.CSValue3);
  ar(L"CSCharge", peak.CSCharge);
  ar(L"IsOverlapped", peak.IsOverlapped);
  ar(L"GroupId", peak.GroupId);
}

MZPeak FindBasePeak(const std::vector<MZPeak>& peaks, const MZRange& range) {
  const MZPeak none;
  const MZPeak* best = &none;
  for (const MZPeak& peak : peaks) {
    if (peak.Mass < range.Start) continue;
    if (peak.Mass > range.End) break;
    if (peak.Ampl > best->Ampl) best = &peak;
  }
  return *best;
}

double QMZPeakField(const MZPeak& peak, const MZPeakField& field) {
  switch (field.Type) {
    case MZPeakField::Ampl:
      return peak.Ampl;
    case MZPeakField::Mass:
      return peak.Mass;
    case MZPeakField::Res:
      return peak.Resolution;
    case MZPeakField::Width:
      return peak.Width;
  }
  ThrowUnknownField();
}

void WMZPeakField(MZPeak& peak, const MZPeakField& field, double value) {
  switch (field.Type) {
    case MZPeakField::Ampl:
      return WriteReported(peak.Ampl, peak.CentroidAmpl, peak.MaxAmpl, value);
    case MZPeakField::Mass:
      return WriteReported(peak.Mass, peak.CentroidX, peak.MaxX, value);
    case MZPeakField::Res:
      peak.Resolution = value;
      return;
    case MZPeakField::Width:
      peak.Width = value;
      return;
  }
  ThrowUnknownField();
}

}  // namespace TslBL
