// The peak table as it is reported: in units of the x axis, with values relative to the largest.

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/PeakLevels.h>
#include <stdexcept>
#include <string>

namespace TslBL {
namespace {

// The largest value that percentages refer to; 0 if the table does not name a row, so that
// the division shows it.
double Largest(const Curve& curve, std::int32_t row, double PeakInfo::*value) {
  const auto i = static_cast<std::size_t>(row);
  return row >= 0 && i < curve.peaks.size() ? curve.peaks[i].*value : 0.0;
}

}  // namespace

double SignalToNoiseAt(const Curve& curve, double idx, double amplitude) {
  const auto i = Truncate<std::uint32_t>(idx);
  const double noise = ValueAt(curve.noise, i);
  return noise < 1e-8 ? 9e99 : (amplitude - ValueAt(curve.baseline, i)) / noise;
}

double WidthInX(const Curve& curve, const PeakInfo& peak) {
  return curve.FractionalIndexToXAxisVal(peak.halfHeightRightIdx) -
         curve.FractionalIndexToXAxisVal(peak.halfHeightLeftIdx);
}

CurvePeak TranslateCurvePeak(const Curve& curve, std::uint32_t peakIdx) {
  if (curve.peaks.empty()) throw std::runtime_error("Peak table is empty.");
  if (peakIdx >= curve.peaks.size())
    throw std::out_of_range("Peak " + std::to_string(peakIdx) + " of a table of " +
                            std::to_string(curve.peaks.size()) + " peaks.");
  const PeakInfo& p = curve.peaks[peakIdx];
  const auto x = [&curve](double idx) { return curve.FractionalIndexToXAxisVal(idx); };
  CurvePeak t;
  t.CentroidX = x(p.centroidIdx);
  t.CentroidAmpl = p.centroidAmpl;
  t.RelCentroidAmpl =
      p.centroidAmpl / Largest(curve, curve.largestCentroidIdx, &PeakInfo::centroidAmpl) * 100;
  t.MaxX = x(p.maxIdx);
  t.MaxAmpl = p.maxAmpl;
  t.RelMaxAmpl = p.maxAmpl / Largest(curve, curve.largestMaxIdx, &PeakInfo::maxAmpl) * 100;
  t.Area = p.area;
  t.Width = WidthInX(curve, p);
  t.Resolution = ResolutionOf(t.CentroidX, t.Width);
  t.Baseline = p.baselineAmpl;
  t.Signal2Noise = SignalToNoiseAt(curve, p.ReportedIdx(), p.ReportedAmpl());
  t.Noise = p.noiseAmpl;
  t.PkStartX = ValueAt(curve.xAxis, p.startIdx);
  t.PkStartAmpl = ValueAt(curve.yAxis, p.startIdx);
  t.PkEndX = ValueAt(curve.xAxis, p.endIdx);
  t.PkEndAmpl = ValueAt(curve.yAxis, p.endIdx);
  t.PkAreaStartX = x(p.areaStartIdx);
  t.PkAreaEndX = x(p.areaEndIdx);
  t.PkAreaIntercept = p.areaIntercept;
  return t;
}

void AddCurvePeaks(const Curve& curve, XMLBuilder& builder) {
  if (!curve.CheckAllStatus(Curve::STATUS_PEAKS)) return;
  if (curve.peaks.empty()) return builder.WNode(L"Peaks", L"");
  std::vector<CurvePeak> peaks;
  peaks.reserve(curve.peaks.size());
  for (std::uint32_t i = 0; i < curve.QNumPeaks(); ++i) peaks.push_back(TranslateCurvePeak(curve, i));
  builder.StartList(L"Peaks");
  for (const CurvePeak& peak : peaks) peak.Serialize(builder);
  builder.EndList();
}

}  // namespace TslBL
