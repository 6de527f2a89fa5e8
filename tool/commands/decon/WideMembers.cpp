#include <tool/commands/decon/WideMembers.h>

#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/chargestate/CSDeconEdit.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/math/Median.h>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::DeconSpectrum;

constexpr double kMost = 4.0;

// m/z.
double WidthOf(const DeconSpectrum& spectrum, std::uint32_t peakId) {
  if (!spectrum.IsMzPkId(peakId)) {
    const TslBL::OverlapPeakInfo& fit = spectrum.overlapPeaks.at(peakId - spectrum.QNumPeaks());
    return std::abs(fit.FWHM) * MzPerPoint(spectrum, fit);
  }
  const TslBL::PeakInfo& peak = spectrum.peaks.at(peakId);
  return spectrum.FractionalIndexToXAxisVal(peak.halfHeightRightIdx) -
         spectrum.FractionalIndexToXAxisVal(peak.halfHeightLeftIdx);
}

std::vector<std::uint32_t> WideMembersOf(const DeconSpectrum& spectrum, const CSSeriesInfo& series) {
  std::vector<double> widths;
  for (const TslBL::CSSeriesPeakInfo& member : series.Peaks)
    widths.push_back(WidthOf(spectrum, member.PeakId));
  const double most = kMost * TslMath::Median(std::vector<double>(widths));
  std::vector<std::uint32_t> wide;
  for (std::size_t i = 0; i < widths.size(); ++i)
    if (most > 0.0 && widths[i] > most) wide.push_back(series.Peaks[i].PeakId);
  return wide;
}

}  // namespace

void DropWideMembers(DeconSpectrum& spectrum) {
  std::vector<std::pair<TslBL::CSSeries, std::vector<std::uint32_t>>> all;
  for (const CSSeriesInfo& series : spectrum.Series) {
    if (series.Series.Type != TslBL::CSSeries::Unresolved || series.Peaks.empty()) continue;
    if (auto wide = WideMembersOf(spectrum, series); !wide.empty())
      all.emplace_back(series.Series, std::move(wide));
  }
  for (const auto& [series, wide] : all) {
    std::wstring error;
    if (!TslBL::CSDeconDeleteSeriesPeaks(spectrum, series, wide, error) && !spectrum.Series.empty())
      throw std::runtime_error(TslCommon::ToUtf8(error));
  }
}

}  // namespace TslTool
