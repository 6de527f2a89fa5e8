#include <tslbl/overlap/Estimates.h>

#include <tslbl/curve/PeakLevels.h>
#include <tslbl/overlap/GroupWork.h>
#include <algorithm>
#include <stdexcept>

namespace TslBL {
namespace {

using Estimates = std::vector<OPDEstimate>;

double HalfWidthOf(std::uint32_t points, std::size_t proposed, std::uint32_t maxPeaks) {
  if (proposed == 0) return 0.0;
  return points / static_cast<double>(std::min<std::size_t>(proposed, maxPeaks)) * 0.5;
}

// Where the engine goes beyond the spectrum, there is no amplitude to judge the peak by: it is refused later.
bool IsTooLow(const Spectrum& spectrum, std::uint32_t index) {
  return index < spectrum.yAxis.size() && spectrum.opdParams.MinPeakAmplitude > spectrum.yAxis[index];
}

OPDEstimate EstimateAt(const Spectrum& spectrum, const OPDCandidate& candidate, std::uint32_t index,
                       double halfWidth) {
  OPDEstimate estimate = candidate;
  estimate.ApexIdx = index;
  estimate.Baseline = ValueAt(spectrum.baseline, index);
  estimate.Ampl = ValueAt(spectrum.yAxis, index);
  estimate.HalfWidth = halfWidth;
  return estimate;
}

void SortByApex(std::vector<OPDEstimate>& estimates) {
  std::ranges::stable_sort(estimates, {}, &OPDEstimate::ApexIdx);
}

std::vector<OPDEstimate> AskEngine(const Spectrum& spectrum, std::span<const OPDCandidate> group,
                                   OverlapPeakEngine* engine) {
  const std::uint32_t last = group.back().EndIdx;
  const GroupPoints points = QGroupPoints(spectrum, group.front().StartIdx, last);
  const std::vector<std::int32_t> proposed = CallInitialEstimates(engine, spectrum, points);
  const double halfWidth = HalfWidthOf(points.Count(), proposed.size(), spectrum.opdParams.MaxPeaks);
  std::vector<OPDEstimate> estimates;
  for (const std::int32_t peak : proposed) {
    const std::uint32_t index = points.first + static_cast<std::uint32_t>(peak);
    if (!IsTooLow(spectrum, index))
      estimates.push_back(EstimateAt(spectrum, CandidateAt(group, index), index, halfWidth));
  }
  SortByApex(estimates);
  if (!estimates.empty() && (estimates.front().ApexIdx < points.first || estimates.back().ApexIdx > last))
    throw std::logic_error("Initial estimate created peaks out of group range.");
  return estimates;
}

void KeepTallest(std::vector<OPDEstimate>& estimates, std::uint32_t count) {
  if (estimates.size() <= count) return;
  std::ranges::stable_sort(estimates, std::greater(), &OPDEstimate::Ampl);
  estimates.resize(count);
  SortByApex(estimates);
}

std::vector<OPDEstimate> EstimatesOf(const Spectrum& spectrum, std::span<const OPDCandidate> group,
                                     OverlapPeakEngine* engine) {
  const bool needsFit = std::ranges::any_of(group, &OPDCandidate::NeedsFit);
  std::vector<OPDEstimate> estimates =
      needsFit ? AskEngine(spectrum, group, engine) : std::vector<OPDEstimate>(group.begin(), group.end());
  KeepTallest(estimates, spectrum.opdParams.MaxPeaks);
  return estimates;
}

}  // namespace

const OPDCandidate& CandidateAt(std::span<const OPDCandidate> group, std::uint32_t index) {
  const auto holds = [&](const OPDCandidate& c) { return c.StartIdx <= index && index <= c.EndIdx; };
  if (const auto here = std::ranges::find_if(group, holds); here != group.end()) return *here;
  const auto next = std::ranges::find_if(group, [&](const OPDCandidate& c) { return c.StartIdx > index; });
  if (next == group.begin()) return *next;
  const auto before = next - 1;
  if (next == group.end()) return *before;
  return next->StartIdx - index < index - before->EndIdx ? *next : *before;
}

std::vector<OPDEstimate> MakeEstimates(const Spectrum& spectrum, std::span<const OPDCandidate> candidates,
                                       OverlapPeakEngine* engine) {
  std::vector<OPDEstimate> all;
  WorkOnGroups<Estimates>(
      candidates, engine != nullptr && engine->MayWorkAtOnce(),
      [&](std::span<const OPDCandidate> group) { return EstimatesOf(spectrum, group, engine); },
      [&](Outcome<Estimates>& outcome) {
        const Estimates estimates = outcome.Take();
        if (estimates.size() > 1) all.insert(all.end(), estimates.begin(), estimates.end());
      });
  return all;
}

}  // namespace TslBL
