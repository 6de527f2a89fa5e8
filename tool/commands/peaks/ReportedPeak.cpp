#include <tool/commands/peaks/ReportedPeak.h>

#include <tslbl/curve/PeakArea.h>
#include <tslbl/spectrum/PeakTable.h>
#include <limits>

namespace TslTool {

std::vector<ReportedPeak> ReportedPeaks(const LoadedSpectrum& loaded) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  ErrorBars errors(loaded);
  std::vector<ReportedPeak> peaks;
  for (TslBL::MZPeak& row : TslBL::CreateMZPeakTable(spectrum)) {
    if (row.Kind == TslBL::MZPeak::OverlapPeak) {
      peaks.push_back({row, row.Area, {kUnknown, kUnknown, kUnknown, kUnknown}});
    } else {
      peaks.push_back({row, TslBL::QWholePeakArea(spectrum, row.PeakId), errors.Of(row.PeakId)});
    }
  }
  return peaks;
}

}  // namespace TslTool
