#include <tool/commands/peaks/ReportedPeak.h>

#include <tool/chain/SmoothFilter.h>
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

// Smoothing puts part of a narrow peak beyond its limits, and swings below the baseline there. What was
// measured between the limits is the whole peak.
double MeasuredArea(const LoadedSpectrum& loaded, const TslBL::PeakInfo& peak) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  const auto above = [&](std::uint32_t i) { return loaded.measured[i] - spectrum.baseline[i]; };
  double area = 0.0;
  for (std::uint32_t i = peak.startIdx; i < peak.endIdx; ++i)
    area += 0.5 * (above(i) + above(i + 1)) * (spectrum.xAxis[i + 1] - spectrum.xAxis[i]);
  return area;
}

bool IsMeasuredKnown(const LoadedSpectrum& loaded) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  const std::size_t points = spectrum.yAxis.size();
  return loaded.measured.size() == points && spectrum.xAxis.size() == points &&
         spectrum.baseline.size() == points && OnlySmooths(spectrum);
}

double WholeArea(const LoadedSpectrum& loaded, bool isMeasuredKnown, std::uint32_t id) {
  const TslBL::PeakInfo& peak = loaded.spectrum->peaks.at(id);
  const bool isMeasured = isMeasuredKnown && peak.endIdx < loaded.measured.size();
  return isMeasured ? MeasuredArea(loaded, peak) : TslBL::QWholePeakArea(*loaded.spectrum, id);
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
  const bool isMeasuredKnown = IsMeasuredKnown(loaded);
  std::vector<ReportedPeak> peaks;
  for (TslBL::MZPeak& row : TslBL::CreateMZPeakTable(spectrum)) {
    if (row.Kind == TslBL::MZPeak::OverlapPeak) {
      const TslBL::OverlapPeakInfo& fit = spectrum.overlapPeaks[peaks.size() - spectrum.QNumPeaks()];
      peaks.push_back({row, row.Area * MzPerPoint(spectrum, fit), ErrorsOfFit(spectrum, fit)});
    } else {
      peaks.push_back({row, WholeArea(loaded, isMeasuredKnown, row.PeakId), errors.Of(row.PeakId)});
    }
  }
  return peaks;
}

}  // namespace TslTool
