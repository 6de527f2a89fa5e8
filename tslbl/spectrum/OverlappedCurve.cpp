#include <tslbl/spectrum/OverlappedCurve.h>

#include <tslbl/detect/FindPeak.h>
#include <algorithm>

namespace TslBL {

std::uint32_t OverlappedCurve::QNumGroups() const {
  return overlapPeaks.empty() ? 0 : overlapPeaks.back().GroupId;
}

bool OverlappedCurve::QPeakIdxByCurveIdx(std::uint32_t curveIdx, std::uint32_t& peak) const {
  const std::int32_t row = FindPeakIdxByCurveIdx(peaks, curveIdx);
  if (row < 0) return false;
  peak = static_cast<std::uint32_t>(row);
  return true;
}

bool OverlappedCurve::QOverlapPeakIdByMzPeak(std::uint32_t dataPeak, std::uint32_t& opd) const {
  const auto first = std::ranges::find(overlapPeaks, dataPeak, &OverlapPeakInfo::DataPeakId);
  opd = static_cast<std::uint32_t>(first - overlapPeaks.begin());
  return first != overlapPeaks.end();
}

std::vector<std::uint32_t> OverlappedCurve::QOverlapGroupPeakIds(std::uint32_t group) const {
  std::vector<std::uint32_t> ids;
  for (std::uint32_t i = 0; i < QNumOverlappedPeaks() && overlapPeaks[i].GroupId <= group; ++i)
    if (overlapPeaks[i].GroupMatch(group)) ids.push_back(i);
  return ids;
}

std::vector<OverlapPeakInfo> OverlappedCurve::QOverlapPeakGroup(std::uint32_t group) const {
  const auto first = std::ranges::find(overlapPeaks, group, &OverlapPeakInfo::GroupId);
  const auto last =
      std::find_if(first, overlapPeaks.end(), [&](const auto& peak) { return !peak.GroupMatch(group); });
  return {first, last};
}

bool OverlappedCurve::OpdPkIdToSpecPkId(std::uint32_t opd, std::uint32_t& peakId) const {
  if (opd >= QNumOverlappedPeaks()) return false;
  peakId = opd + QNumPeaks();
  return true;
}

bool OverlappedCurve::SpecPkIdToOpdPkId(std::uint32_t peakId, std::uint32_t& opd) const {
  if (!IsOpdPkId(peakId)) return false;
  opd = peakId - QNumPeaks();
  return true;
}

void OverlappedCurve::WOverlapPeakGroup(std::vector<OverlapPeakInfo>& group) {
  if (group.empty()) return;
  std::ranges::stable_sort(group, {}, &OverlapPeakInfo::Position);
  const bool reorder = !overlapPeaks.empty() && overlapPeaks.back().Position > group.front().Position;
  const std::uint32_t number = QNumGroups() + 1;
  for (OverlapPeakInfo& peak : group) peak.GroupId = number;
  overlapPeaks.insert(overlapPeaks.end(), group.begin(), group.end());
  if (reorder) {
    std::ranges::stable_sort(overlapPeaks, {}, &OverlapPeakInfo::Position);
    ReorderGroups();
  }
  SyncOverlapGroups();
}

void OverlappedCurve::ClearOverlapRange(double lowMZ, double highMZ) {
  const std::uint32_t low = QXAxisToIdx(lowMZ, ROUND_UP);
  const std::uint32_t high = QXAxisToIdx(highMZ, ROUND_DOWN);
  std::vector<std::uint32_t> inRange;
  for (std::uint32_t i = 0; i < QNumPeaks(); ++i) {
    if (peaks[i].startIdx >= high || peaks[i].endIdx <= low) continue;
    inRange.push_back(i);
    peaks[i].overlapGroup = NoOverlapGroupId;
  }
  RemoveOverlapDataPeaks(inRange);
  SyncOverlapGroups();
}

void OverlappedCurve::RemoveOverlapDataPeaks(const std::vector<std::uint32_t>& dataPeaks) {
  if (dataPeaks.empty()) return;
  const auto removed = std::erase_if(
      overlapPeaks, [&](const OverlapPeakInfo& peak) { return peak.DataPeakId <= dataPeaks.back(); });
  if (removed > 0) ReorderGroups();
}

void OverlappedCurve::ReorderGroups() {
  std::uint32_t number = 0;
  std::uint32_t last = 0;
  for (OverlapPeakInfo& peak : overlapPeaks) {
    if (peak.GroupId != last) {
      ++number;
      last = peak.GroupId;
    }
    peak.GroupId = number;
  }
}

void OverlappedCurve::SyncOverlapGroups() {
  for (PeakInfo& peak : peaks) peak.overlapGroup = NoOverlapGroupId;
  for (const OverlapPeakInfo& peak : overlapPeaks)
    if (peak.DataPeakId < peaks.size()) peaks[peak.DataPeakId].overlapGroup = peak.GroupId;
}

void OverlappedCurve::RenumberDataPeakIds(std::uint32_t from, bool increment) {
  for (OverlapPeakInfo& peak : overlapPeaks) {
    if (peak.DataPeakId < from) continue;
    peak.DataPeakId = increment ? peak.DataPeakId + 1 : peak.DataPeakId - 1;
  }
}

}  // namespace TslBL
