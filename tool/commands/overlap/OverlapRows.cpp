#include <tool/commands/overlap/OverlapRows.h>

#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/closed/math/peak/GaussPeak.h>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

using TslBL::OverlapPeakInfo;
using TslBL::Spectrum;
using TslMath::GaussPeak;

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

// What is known of a peak that stands alone is not known of one that others were found under.
OverlapRow RowOf(const ReportedPeak& peak, std::size_t number) {
  const TslBL::MZPeak& row = peak.row;
  const auto unlessMerged = [&](double error) { return row.IsOverlapped ? kUnknown : error; };
  return {row.GroupId,
          number,
          false,
          row.Mass,
          unlessMerged(peak.errors.mz),
          row.Ampl,
          peak.area,
          unlessMerged(peak.errors.area),
          peak.Width(),
          kUnknown};
}

OverlapRow RowOf(const Spectrum& spectrum, std::uint32_t opd, const ReportedPeak& peak) {
  const OverlapPeakInfo& fit = spectrum.overlapPeaks[opd];
  const double step = MzPerPoint(spectrum, fit);
  const double area = GaussPeak(fit.Height, 0.0, GaussPeak::FWHM_to_A3(fit.FWHM), 0.0).QArea();
  return {fit.GroupId,
          spectrum.QNumPeaks() + std::size_t{opd} + 1,
          true,
          spectrum.FractionalIndexToXAxisVal(fit.Position),
          peak.errors.mz,
          fit.Height + fit.Baseline,
          area * step,
          peak.errors.area,
          std::abs(fit.FWHM) * step,
          fit.Fit4};
}

// Whether the row is the last data peak of its group.
bool IsLastOfGroup(const std::vector<ReportedPeak>& peaks, std::size_t row, std::size_t dataPeaks) {
  for (std::size_t i = row + 1; i < dataPeaks; ++i)
    if (peaks[i].row.GroupId == peaks[row].row.GroupId) return false;
  return true;
}

}  // namespace

std::vector<OverlapRow> OverlapRows(const LoadedSpectrum& loaded) {
  const Spectrum& spectrum = *loaded.spectrum;
  const std::vector<ReportedPeak> peaks = ReportedPeaks(loaded);
  std::vector<OverlapRow> rows;
  for (std::size_t i = 0; i < spectrum.QNumPeaks(); ++i) {
    rows.push_back(RowOf(peaks[i], i + 1));
    const std::uint32_t group = peaks[i].row.GroupId;
    if (group == TslBL::NoOverlapGroupId || !IsLastOfGroup(peaks, i, spectrum.QNumPeaks())) continue;
    for (const std::uint32_t opd : spectrum.QOverlapGroupPeakIds(group))
      rows.push_back(RowOf(spectrum, opd, peaks[spectrum.QNumPeaks() + opd]));
  }
  return rows;
}

}  // namespace TslTool
