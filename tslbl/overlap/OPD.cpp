#include <tslbl/overlap/OPD.h>

#include <tslbl/curve/Execute.h>
#include <tslbl/curve/Step.h>
#include <tslbl/overlap/Candidates.h>
#include <tslbl/overlap/Estimates.h>
#include <tslbl/overlap/FitGroup.h>
#include <tslbl/overlap/GroupWork.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <stdexcept>

namespace TslBL {
namespace {

std::vector<OPDCandidate> GroupedCandidates(const Spectrum& spectrum) {
  std::vector<OPDCandidate> candidates = BuildCandidates(spectrum);
  FilterCandidates(spectrum, candidates);
  NumberGroups(spectrum, candidates);
  return candidates;
}

using Group = std::vector<OverlapPeakInfo>;

// What cannot be fitted must not cost the user the other groups.
void KeepOrLose(Spectrum& spectrum, Outcome<Group>& fit) {
  try {
    Group group = fit.Take();
    spectrum.WOverlapPeakGroup(group);
  } catch (const std::exception&) {
  }
}

void FitSpectrum(Spectrum& spectrum) {
  const std::unique_ptr<OverlapPeakEngine> engine = MakeOverlapPeakEngine();
  std::vector<OPDEstimate> estimates = MakeEstimates(spectrum, GroupedCandidates(spectrum), engine.get());
  if (spectrum.opdParams.SingleGroup)
    for (OPDEstimate& estimate : estimates) estimate.GroupId = 1;
  WorkOnGroups<Group>(
      std::span<const OPDEstimate>(estimates), engine->MayWorkAtOnce(),
      [&](std::span<const OPDEstimate> group) {
        return FitPeaksOf(spectrum, group, spectrum.opdParams.FittingFunc, engine.get());
      },
      [&](Outcome<Group>& fit) { KeepOrLose(spectrum, fit); });
}

}  // namespace

bool DoOPD(Spectrum& spectrum, Changed& changed, std::wstring& error) {
  if (!spectrum.CheckAllStatus(Curve::STATUS_PEAKS)) {
    error = L"Peak Detect must be executed before Overlapped Peak Deconvolution can be executed.";
    return false;
  }
  spectrum.ClearOverlapRange(DevTuneRules::QMinMz(), DevTuneRules::QMaxMz());
  HistoryEntry entry(spectrum, CurveEval(spectrum.opdParams));
  FitSpectrum(spectrum);
  entry.Keep();
  changed.overlapPeaks = true;
  spectrum.AddStatus(Curve::STATUS_OPD);
  return true;
}

bool ExecuteOPD(Spectrum& spectrum, Changed& changed, std::wstring& error) {
  const bool hasPeaks = spectrum.CheckAllStatus(Curve::STATUS_PEAKS);
  if (!hasPeaks && (!ExecutePeakDetect(spectrum, changed, error) || !changed.peaks)) return false;
  return DoOPD(spectrum, changed, error);
}

}  // namespace TslBL
