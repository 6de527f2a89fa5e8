#include <tslbl/overlap/OPDMerge.h>

#include <tslbl/detect/InsertPeak.h>
#include <tslbl/overlap/GroupLimits.h>

namespace TslBL {
namespace {

void ClearRanges(const OPDParams& params, Spectrum& spectrum) {
  for (const OPDRange& range : params.Ranges)
    if (range.Enable) spectrum.ClearOverlapRange(range.LowMZ, range.HighMZ);
}

void InsertDataPeak(Spectrum& target, const PeakInfo& row) {
  const std::int32_t place = InsertPeak(target, row);
  target.RenumberDataPeakIds(static_cast<std::uint32_t>(place), true);
}

// Rows that a refit has found in the source stand between those that both have.
void MergeDataPeaks(Spectrum& target, const Spectrum& source) {
  for (std::size_t i = 0; target.peaks.size() < source.peaks.size(); ++i) {
    const PeakInfo& row = source.peaks[i];
    if (i >= target.peaks.size() || target.peaks[i].centroidIdx != row.centroidIdx)
      InsertDataPeak(target, row);
  }
}

void MergeGroup(Spectrum& target, std::vector<OverlapPeakInfo> group) {
  const MZLimits limits = LimitsOfPeaks(target, group);
  target.ClearOverlapRange(limits.low, limits.high);
  target.WOverlapPeakGroup(group);
}

}  // namespace

void OPDMergePeakTable(const OPDParams& params, Spectrum& target, const Spectrum& source) {
  if (params.FullRange) return void(target = source);
  target.evals = source.evals;
  target.opdParams = source.opdParams;
  ClearRanges(params, target);
  MergeDataPeaks(target, source);
  for (std::uint32_t group = 1; group <= source.QNumGroups(); ++group)
    MergeGroup(target, source.QOverlapPeakGroup(group));
}

}  // namespace TslBL
