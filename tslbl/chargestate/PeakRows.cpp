#include <tslbl/chargestate/PeakRows.h>

#include <tslbl/spectrum/PeakTable.h>

namespace TslBL {
namespace {

class Rows {
 public:
  explicit Rows(const ChargeStateParams& params) : params_(params) {}

  void AddDataPeak(std::uint32_t id, const CurvePeak& peak) {
    const bool atCentroid = params_.MZAssign == ChargeStateParams::Centroid;
    Add({id, atCentroid ? peak.CentroidX : peak.MaxX, atCentroid ? peak.CentroidAmpl : peak.MaxAmpl,
         peak.Area, peak.Signal2Noise, peak.Resolution});
  }
  void AddOverlapPeak(const MZPeak& peak) {
    Add({peak.PeakId, peak.Mass, peak.Ampl, peak.Area, peak.Signal2Noise, peak.Resolution});
  }
  std::vector<PeakRow> Take() { return std::move(rows_); }

 private:
  void Add(PeakRow row) {
    if (!params_.FullRange && (row.Mz < params_.StartMz || row.Mz > params_.EndMz)) return;
    if (params_.PkIntensity == ChargeStateParams::Area) row.Ampl = row.Area;
    rows_.push_back(row);
  }

  const ChargeStateParams& params_;
  std::vector<PeakRow> rows_;
};

}  // namespace

std::vector<PeakRow> BuildPeakRows(const DeconSpectrum& spectrum) {
  const bool useOPD = spectrum.CSParams.UseOPD;
  Rows rows(spectrum.CSParams);
  for (std::uint32_t i = 0; i < spectrum.QNumPeaks(); ++i)
    if (!useOPD || spectrum.peaks[i].overlapGroup == NoOverlapGroupId)
      rows.AddDataPeak(i, TranslateCurvePeak(spectrum, i));
  if (useOPD)
    for (std::uint32_t i = 0; i < spectrum.QNumOverlappedPeaks(); ++i)
      rows.AddOverlapPeak(TranslateMZOverlapPeak(spectrum, i));
  return rows.Take();
}

}  // namespace TslBL
