#include <tslbl/spectrum/PeakTable.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/closed/math/peak/GaussPeak.h>
#include <tslbl/curve/PeakLevels.h>
#include <tslbl/detect/PeakRowAt.h>
#include <stdexcept>

namespace TslBL {
namespace {

using TslMath::GaussPeak;

double LargestCentroidAmpl(const Spectrum& spectrum) {
  const auto row = static_cast<std::size_t>(spectrum.largestCentroidIdx);
  return row < spectrum.peaks.size() ? spectrum.peaks[row].centroidAmpl : 0.0;
}

// A fitted peak has one position: its centroid is its maximum.
void SetPosition(MZPeak& peak, double x, double ampl, double largest) {
  peak.Mass = peak.CentroidX = peak.MaxX = x;
  peak.Ampl = peak.CentroidAmpl = peak.MaxAmpl = ampl;
  peak.RelCentroidAmpl = peak.RelMaxAmpl = ampl / largest * 100;
}

void SetShape(MZPeak& peak, const GaussPeak& model, const Spectrum& spectrum) {
  peak.Area = model.QArea();
  QWidthAndResolution(peak.Mass, model.QHalfHeightLeftX(), model.QHalfHeightRightX(), peak.Width,
                      peak.Resolution);
  peak.PkStartX = peak.PkAreaStartX = model.QPeakStart();
  peak.PkStartAmpl = ValueAt(spectrum.yAxis, spectrum.QXAxisToIdx(peak.PkStartX, ROUND_UP));
  peak.PkEndX = peak.PkAreaEndX = model.QPeakEnd();
  peak.PkEndAmpl = ValueAt(spectrum.yAxis, spectrum.QXAxisToIdx(peak.PkEndX, ROUND_DOWN));
  peak.PkAreaIntercept = model.Qd();
}

}  // namespace

MZPeak TranslateMZPeak(const Spectrum& spectrum, std::uint32_t peakIdx) {
  MZPeak peak;
  static_cast<PeakValues&>(peak) = TranslateCurvePeak(spectrum, peakIdx);
  const PeakInfo& row = spectrum.peaks[peakIdx];
  peak.Kind = MZPeak::DataPeak;
  peak.CurveId = spectrum.id;
  peak.PeakId = peakIdx;
  peak.Mass = row.useMax ? peak.MaxX : peak.CentroidX;
  peak.Ampl = row.useMax ? peak.MaxAmpl : peak.CentroidAmpl;
  peak.GroupId = row.overlapGroup;
  peak.IsOverlapped = row.overlapGroup != NoOverlapGroupId;
  return peak;
}

MZPeak TranslateMZOverlapPeak(const Spectrum& spectrum, std::uint32_t opdIdx) {
  if (spectrum.overlapPeaks.empty()) throw std::runtime_error("Overlap peak table is empty.");
  MZPeak peak;
  if (!spectrum.OpdPkIdToSpecPkId(opdIdx, peak.PeakId))
    throw std::runtime_error("Out of range overlap peak index.");
  const OverlapPeakInfo& fit = spectrum.overlapPeaks[opdIdx];
  peak.Kind = MZPeak::OverlapPeak;
  peak.CurveId = spectrum.id;
  SetPosition(peak, spectrum.FractionalIndexToXAxisVal(fit.Position), fit.Height + fit.Baseline,
              LargestCentroidAmpl(spectrum));
  SetShape(peak, GaussPeak(fit.Height, peak.Mass, GaussPeak::FWHM_to_A3(fit.FWHM), fit.Baseline), spectrum);
  const auto point = Truncate<std::uint32_t>(fit.Position);
  peak.Baseline = fit.Baseline;
  peak.Noise = ValueAt(spectrum.noise, point);
  peak.Signal2Noise = QSignalToNoise(fit.Height, ValueAt(spectrum.baseline, point), peak.Noise);
  peak.IsOverlapped = false;
  peak.GroupId = fit.GroupId;
  return peak;
}

std::vector<MZPeak> CreateMZPeakTable(const Spectrum& spectrum) {
  std::vector<MZPeak> table;
  table.reserve(spectrum.peaks.size() + spectrum.overlapPeaks.size());
  for (std::uint32_t i = 0; i < spectrum.QNumPeaks(); ++i) table.push_back(TranslateMZPeak(spectrum, i));
  for (std::uint32_t i = 0; i < spectrum.QNumOverlappedPeaks(); ++i)
    table.push_back(TranslateMZOverlapPeak(spectrum, i));
  return table;
}

bool DetectOnePeak(Spectrum& spectrum, std::uint32_t curveIdx, MZPeak& peak) {
  const std::int32_t row = PeakRowAt(spectrum, curveIdx);
  if (row < 0) return false;
  peak = TranslateMZPeak(spectrum, static_cast<std::uint32_t>(row));
  return true;
}

bool QPeakAttrByCurveIdx(const Spectrum& spectrum, std::uint32_t curveIdx, MZPeak& peak) {
  std::uint32_t row = 0;
  if (!spectrum.QPeakIdxByCurveIdx(curveIdx, row)) return false;
  peak = TranslateMZPeak(spectrum, row);
  if (!peak.IsOverlapped) return true;
  std::uint32_t opd = 0;
  if (!spectrum.QOverlapPeakIdByMzPeak(row, opd)) return false;
  peak = TranslateMZOverlapPeak(spectrum, opd);
  return true;
}

}  // namespace TslBL
