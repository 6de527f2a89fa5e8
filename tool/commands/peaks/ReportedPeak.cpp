#include <tool/commands/peaks/ReportedPeak.h>

#include <tslbl/curve/PeakArea.h>
#include <tslbl/spectrum/PeakTable.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

ErrorBar ErrorsOfFit(const TslBL::Spectrum& spectrum, const TslBL::OverlapPeakInfo& fit) {
  // Nothing is known of the place of a peak that has come out without height, and of how sure that is.
  if (!(fit.Height > 0.0)) return {kUnknown, kUnknown, kUnknown, kUnknown};
  const double step = MzPerPoint(spectrum, fit);
  return {kUnknown, fit.Fit5 * step, kUnknown, fit.Fit6 * step};
}

}  // namespace

double MzPerPoint(const TslBL::Spectrum& spectrum, const TslBL::OverlapPeakInfo& peak) {
  const double half = std::max(std::abs(peak.FWHM) / 2, 0.5);
  const double low = std::max(peak.Position - half, 0.0);
  const double high = std::min(peak.Position + half, static_cast<double>(spectrum.xAxis.size()) - 1);
  return (spectrum.FractionalIndexToXAxisVal(high) - spectrum.FractionalIndexToXAxisVal(low)) / (high - low);
}

std::vector<ReportedPeak> ReportedPeaks(const LoadedSpectrum& loaded) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  ErrorBars errors(loaded);
  std::vector<ReportedPeak> peaks;
  for (TslBL::MZPeak& row : TslBL::CreateMZPeakTable(spectrum)) {
    if (row.Kind == TslBL::MZPeak::OverlapPeak) {
      const TslBL::OverlapPeakInfo& fit = spectrum.overlapPeaks[peaks.size() - spectrum.QNumPeaks()];
      peaks.push_back({row, row.Area * MzPerPoint(spectrum, fit), ErrorsOfFit(spectrum, fit)});
    } else {
      peaks.push_back({row, TslBL::QWholePeakArea(spectrum, row.PeakId), errors.Of(row.PeakId)});
    }
  }
  return peaks;
}

}  // namespace TslTool
