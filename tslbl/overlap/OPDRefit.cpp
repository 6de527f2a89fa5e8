#include <tslbl/overlap/OPDRefit.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/curve/RunForUser.h>
#include <tslbl/overlap/FitGroup.h>
#include <tslbl/overlap/GroupLimits.h>
#include <tslbl/spectrum/PeakTable.h>
#include <algorithm>

namespace TslBL {
namespace {

// The data peak under what the user sees at a point.
bool FindShownPeak(const Spectrum& spectrum, std::uint32_t point, MZPeak& peak) {
  if (!QPeakAttrByCurveIdx(spectrum, point, peak)) return false;
  if (std::uint32_t opd = 0; spectrum.SpecPkIdToOpdPkId(peak.PeakId, opd))
    peak = TranslateMZPeak(spectrum, spectrum.overlapPeaks[opd].DataPeakId);
  return true;
}

bool FindDataPeak(Spectrum& spectrum, double mz, MZPeak& peak) {
  const std::uint32_t point = spectrum.QXAxisToIdx(mz, ROUND_UP);
  if (FindShownPeak(spectrum, point, peak)) return true;
  if (!DetectOnePeak(spectrum, point, peak)) return false;
  spectrum.RenumberDataPeakIds(peak.PeakId, true);
  return true;
}

MZLimits Extended(const MZLimits& group, bool isEmpty, const MZPeak& peak) {
  if (isEmpty) return {peak.PkStartX, peak.PkEndX};
  return {std::min(group.low, peak.PkStartX), std::max(group.high, peak.PkEndX)};
}

OPDEstimate EstimateOf(const Spectrum& spectrum, std::uint32_t group, const MZPeak& peak, double halfWidth) {
  OverlapPeakInfo place;
  place.DataPeakId = peak.PeakId;
  place.Position = spectrum.QXAxisToIdx(peak.CentroidX, ROUND_DOWN);
  return EstimatesOfPeaks(spectrum, std::span(&place, 1), group, halfWidth).front();
}

void Refit(const OPDParams& params, Spectrum& spectrum, const std::vector<OPDEstimate>& estimates) {
  const std::unique_ptr<OverlapPeakEngine> engine = MakeOverlapPeakEngine();
  FitGroup(spectrum, estimates, params.FittingFunc, engine.get());
}

void RefitWith(const MZPeak& peak, const std::vector<OverlapPeakInfo>& before, const MZLimits& limits,
               const OPDParams& params, Spectrum& spectrum, std::uint32_t& group) {
  const double halfWidth = HalfWidthOfPeaks(spectrum, limits, before.size() + 1);
  std::vector<OPDEstimate> estimates = EstimatesOfPeaks(spectrum, before, group, halfWidth);
  estimates.push_back(EstimateOf(spectrum, group, peak, halfWidth));
  std::ranges::stable_sort(estimates, {}, &OPDEstimate::ApexIdx);
  spectrum.ClearOverlapRange(limits.low, limits.high);
  Refit(params, spectrum, estimates);
  group = spectrum.peaks.at(peak.PeakId).overlapGroup;
}

// The peaks of a group but for those listed.
std::vector<OverlapPeakInfo> Remaining(const Spectrum& spectrum, const std::vector<std::uint32_t>& ids,
                                       const std::vector<std::uint32_t>& removed) {
  std::vector<OverlapPeakInfo> kept;
  for (const std::uint32_t id : ids)
    if (!std::ranges::binary_search(removed, id)) kept.push_back(spectrum.overlapPeaks[id]);
  return kept;
}

}  // namespace

bool OPDRefitGroupAdd(const OPDParams& params, Spectrum& spectrum, std::uint32_t& group, double mz,
                      std::wstring& error) {
  MZPeak peak;
  if (!FindDataPeak(spectrum, mz, peak)) {
    error = TslLoadString(ModuleHandle(), kNoPeakAtLocation);
    return false;
  }
  const std::vector<OverlapPeakInfo> before = spectrum.QOverlapPeakGroup(group);
  const MZLimits limits = Extended(LimitsOfPeaks(spectrum, before), before.empty(), peak);
  return RunForUser([&] { RefitWith(peak, before, limits, params, spectrum, group); }, error);
}

bool OPDRefitGroupRemove(const OPDParams& params, Spectrum& spectrum, std::uint32_t& group,
                         const std::vector<std::uint32_t>& opdIds, std::wstring& error) {
  const std::vector<std::uint32_t> ids = spectrum.QOverlapGroupPeakIds(group);
  const std::vector<OverlapPeakInfo> kept = Remaining(spectrum, ids, opdIds);
  if (kept.size() == ids.size()) return true;
  const MZLimits whole = LimitsOfPeaks(spectrum, spectrum.QOverlapPeakGroup(group));
  spectrum.ClearOverlapRange(whole.low, whole.high);
  if (kept.empty()) {
    group = 0;
    return true;
  }
  const double halfWidth = HalfWidthOfPeaks(spectrum, LimitsOfPeaks(spectrum, kept), kept.size());
  const std::vector<OPDEstimate> estimates = EstimatesOfPeaks(spectrum, kept, group, halfWidth);
  return RunForUser([&] { Refit(params, spectrum, estimates); }, error);
}

}  // namespace TslBL
