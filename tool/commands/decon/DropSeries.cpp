#include <tool/commands/decon/DropSeries.h>

#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/chargestate/CSDeconEdit.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace TslTool {
namespace {

constexpr double kSure = 0.2;  // Da

bool IsUnsure(const TslBL::DeconSpectrum& spectrum, const TslBL::CSSeriesPeakInfo& member) {
  if (member.PeakId < spectrum.QNumPeaks()) return false;
  const TslBL::OverlapPeakInfo& fit = spectrum.overlapPeaks.at(member.PeakId - spectrum.QNumPeaks());
  return !(fit.Fit5 * MzPerPoint(spectrum, fit) * member.Charge < kSure);
}

}  // namespace

void DropSeries(TslBL::DeconSpectrum& spectrum,
                const std::function<bool(const TslBL::CSSeriesInfo& series)>& isUnwanted) {
  std::vector<TslBL::CSSeries> unwanted;
  for (const TslBL::CSSeriesInfo& series : spectrum.Series)
    if (isUnwanted(series)) unwanted.push_back(series.Series);
  std::wstring error;
  if (!TslBL::CSDeconDeleteSeries(spectrum, unwanted, error) && !spectrum.Series.empty())
    throw std::runtime_error(TslCommon::ToUtf8(error));
}

void DropUnsureSeries(TslBL::DeconSpectrum& spectrum) {
  DropSeries(spectrum, [&](const TslBL::CSSeriesInfo& series) {
    return series.Series.Type == TslBL::CSSeries::Resolved &&
           std::ranges::any_of(series.Peaks, [&](const auto& member) { return IsUnsure(spectrum, member); });
  });
}

}  // namespace TslTool
