#include <tool/commands/peaks/ReportedPeak.h>

#include <tslbl/curve/PeakArea.h>
#include <tslbl/spectrum/PeakTable.h>

namespace TslTool {

std::vector<ReportedPeak> ReportedPeaks(const TslBL::Spectrum& spectrum) {
  std::vector<ReportedPeak> peaks;
  for (TslBL::MZPeak& row : TslBL::CreateMZPeakTable(spectrum)) {
    const bool isFitted = row.Kind == TslBL::MZPeak::OverlapPeak;
    const double area = isFitted ? row.Area : TslBL::QWholePeakArea(spectrum, row.PeakId);
    peaks.push_back({row, area});
  }
  return peaks;
}

}  // namespace TslTool
