#include <tslbl/overlap/GroupLimits.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/curve/PeakLevels.h>
#include <algorithm>
#include <stdexcept>

namespace TslBL {
namespace {

[[noreturn]] void RefuseRange() { throw std::logic_error("Invalid group range."); }

const PeakInfo& DataPeakOf(const Spectrum& spectrum, const OverlapPeakInfo& peak) {
  if (peak.DataPeakId >= spectrum.peaks.size()) RefuseRange();
  const PeakInfo& row = spectrum.peaks[peak.DataPeakId];
  if (std::max(row.startIdx, row.endIdx) >= spectrum.xAxis.size()) RefuseRange();
  return row;
}

}  // namespace

MZLimits LimitsOfPeaks(const Spectrum& spectrum, std::span<const OverlapPeakInfo> peaks) {
  if (peaks.empty()) return {};
  const auto [lowest, highest] = std::ranges::minmax_element(peaks, {}, &OverlapPeakInfo::DataPeakId);
  return {spectrum.xAxis[DataPeakOf(spectrum, *lowest).startIdx],
          spectrum.xAxis[DataPeakOf(spectrum, *highest).endIdx]};
}

double HalfWidthOfPeaks(const Spectrum& spectrum, const MZLimits& limits, std::size_t count) {
  const std::uint32_t from = spectrum.QXAxisToIdx(limits.low, ROUND_DOWN);
  const std::uint32_t to = spectrum.QXAxisToIdx(limits.high, ROUND_UP);
  if (to < from) RefuseRange();
  return (static_cast<double>(to - from) + 1) / static_cast<double>(count) * 0.5;
}

std::vector<OPDEstimate> EstimatesOfPeaks(const Spectrum& spectrum, std::span<const OverlapPeakInfo> peaks,
                                          std::uint32_t group, double halfWidth) {
  std::vector<OPDEstimate> estimates;
  for (const OverlapPeakInfo& peak : peaks) {
    const PeakInfo& row = DataPeakOf(spectrum, peak);
    const auto apex = Truncate<std::uint32_t>(peak.Position);
    estimates.push_back({group, peak.DataPeakId, row.startIdx, apex, row.endIdx,
                         ValueAt(spectrum.baseline, apex), ValueAt(spectrum.yAxis, apex), halfWidth});
  }
  return estimates;
}

}  // namespace TslBL
