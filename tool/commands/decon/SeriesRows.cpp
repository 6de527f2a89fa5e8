#include <tool/commands/decon/SeriesRows.h>

#include <tool/commands/decon/CountErrors.h>
#include <tool/commands/decon/MassErrors.h>
#include <tool/commands/decon/PeakMeans.h>
#include <tool/commands/decon/PeakShares.h>
#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace TslTool {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::CSSeriesPeakInfo;
using TslBL::DeconSpectrum;

double IntensityOf(const DeconSpectrum& spectrum, const ReportedPeak& peak, bool isPeakList) {
  if (spectrum.CSParams.PkIntensity == TslBL::ChargeStateParams::Amplitude)
    return peak.row.Ampl - peak.row.Baseline;
  return isPeakList ? peak.row.Area : peak.area;
}

std::vector<double> IntensitiesOf(const DeconSpectrum& spectrum, const std::vector<ReportedPeak>& peaks,
                                  bool isPeakList) {
  std::vector<double> intensities;
  intensities.reserve(peaks.size());
  for (const ReportedPeak& peak : peaks) intensities.push_back(IntensityOf(spectrum, peak, isPeakList));
  return intensities;
}

SeriesRow RowOf(const DeconSpectrum& spectrum, std::uint32_t index, const SeriesMass& mass,
                double countError) {
  const CSSeriesInfo& series = spectrum.Series[index];
  const auto [low, high] = std::ranges::minmax(series.Peaks, {}, &CSSeriesPeakInfo::Charge);
  return {TslCommon::ToUtf8(DeconSpectrum::CSSeriesObjToLabel(series.Series)),
          series.Series.Type == TslBL::CSSeries::Resolved,
          index,
          mass.mass,
          std::hypot(mass.error, countError),
          low.Charge == high.Charge ? std::numeric_limits<double>::quiet_NaN() : mass.deviation,
          low.Charge,
          high.Charge,
          0.0,
          {}};
}

// By the rows of the peak table. Where nothing tells by how much positions lie off the means, they stand for
// them.
std::vector<double> MeansOfRows(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& rows) {
  const std::vector<double> ofPeaks = PeakMeans(loaded);
  std::vector<double> means(rows.size(), std::numeric_limits<double>::quiet_NaN());
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].row.Kind != TslBL::MZPeak::OverlapPeak)
      means[i] = ofPeaks.empty() ? rows[i].row.Mass : ofPeaks.at(rows[i].row.PeakId);
  return means;
}

}  // namespace

const DeconSpectrum& DeconvolvedOf(const LoadedSpectrum& loaded) {
  return dynamic_cast<const DeconSpectrum&>(*loaded.spectrum);
}

std::vector<SeriesRow> SeriesRows(const LoadedSpectrum& loaded) {
  const DeconSpectrum& spectrum = DeconvolvedOf(loaded);
  const std::vector<ReportedPeak> peaks = ReportedPeaks(loaded);
  const PeakShares shares(spectrum, IntensitiesOf(spectrum, peaks, loaded.isPeakList));
  const MassErrors errors(spectrum, peaks, shares);
  const std::vector<double> means = loaded.isPeakList ? std::vector<double>() : MeansOfRows(loaded, peaks);
  const std::vector<double> countErrors = CountErrors(spectrum, peaks);
  std::vector<SeriesRow> rows;
  rows.reserve(spectrum.Series.size());
  for (std::uint32_t i = 0; i < spectrum.Series.size(); ++i) {
    const CSSeriesInfo& series = spectrum.Series[i];
    if (series.Peaks.empty()) continue;
    SeriesRow& row = rows.emplace_back(RowOf(spectrum, i, errors.Of(series, means), countErrors[i]));
    for (std::uint32_t k = 0; k < series.Peaks.size(); ++k) {
      const CSSeriesPeakInfo& member = series.Peaks[k];
      const double intensity =
          shares.Of(i, k) * IntensityOf(spectrum, peaks.at(member.PeakId), loaded.isPeakList);
      row.peaks.push_back({member.Charge, std::size_t{member.PeakId} + 1, member.MZ, intensity});
      row.intensity += intensity;
    }
  }
  std::ranges::stable_sort(rows, std::ranges::greater(), &SeriesRow::intensity);
  return rows;
}

}  // namespace TslTool
