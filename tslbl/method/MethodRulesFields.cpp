// What stands in a method, asked and written.

#include <tslbl/method/MethodRules.h>

namespace TslBL {

const TuneRun& MethodRules::Run(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return TuneRuns.at(TimePeriods.at(tp).Sequence.at(si).at(tr));
}

TuneRun& MethodRules::Run(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) {
  return TuneRuns.at(TimePeriods.at(tp).Sequence.at(si).at(tr));
}

const Tune& MethodRules::FirstTune(const SeqItem& item) const {
  return Tunes.at(TuneRuns.at(item.at(0)).TuneId);
}

void MethodRules::WDescription(const std::wstring& description) { Store(Desc, description); }

std::uint32_t MethodRules::QNumSeqItems(std::uint32_t tp) const {
  return static_cast<std::uint32_t>(TimePeriods.at(tp).Sequence.size());
}
std::uint32_t MethodRules::QSINumTuneRuns(std::uint32_t tp, std::uint32_t si) const {
  return static_cast<std::uint32_t>(TimePeriods.at(tp).Sequence.at(si).size());
}

// ---- Time periods ----------------------------------------------------------------------

bool MethodRules::QTPSave(std::uint32_t tp) const { return TimePeriods.at(tp).Save; }
std::uint32_t MethodRules::QTPNumLoops(std::uint32_t tp) const { return TimePeriods.at(tp).Loops; }
std::uint32_t MethodRules::QTPTimeout(std::uint32_t tp) const { return TimePeriods.at(tp).Timeout; }
std::uint32_t MethodRules::QTPSettleDelay(std::uint32_t tp) const { return TimePeriods.at(tp).SettleDelay; }

void MethodRules::WTPSave(std::uint32_t tp, bool save) { Store(TimePeriods.at(tp).Save, save); }
void MethodRules::WTPNumLoops(std::uint32_t tp, std::uint32_t loops) {
  Store(TimePeriods.at(tp).Loops, loops);
}
void MethodRules::WTPTimeout(std::uint32_t tp, std::uint32_t timeout) {
  Store(TimePeriods.at(tp).Timeout, timeout);
  WTPNumLoops(tp, CalculateNumLoops(tp, timeout));
}
void MethodRules::WTPSettleDelay(std::uint32_t tp, std::uint32_t delay) {
  Store(TimePeriods.at(tp).SettleDelay, delay);
}

// ---- Tune runs -------------------------------------------------------------------------

const Tune& MethodRules::QTRTune(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Tunes.at(Run(tp, si, tr).TuneId);
}
std::uint32_t MethodRules::QTRNumRecs(std::uint32_t, std::uint32_t, std::uint32_t) const { return 1; }
std::uint32_t MethodRules::QTRSettleDelay(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Run(tp, si, tr).SettleDelay;
}
DDInfo::Types MethodRules::QTRDDType(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Run(tp, si, tr).Info.Type;
}
DDInfo::Triggers MethodRules::QTRStartTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Run(tp, si, tr).Info.StartTrigger;
}
double MethodRules::QTRStartTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Run(tp, si, tr).Info.StartTriggerValue;
}
DDInfo::Triggers MethodRules::QTREndTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Run(tp, si, tr).Info.EndTrigger;
}
double MethodRules::QTREndTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Run(tp, si, tr).Info.EndTriggerValue;
}
const std::vector<CurveEval>& MethodRules::QTRSpecEvalMethod(std::uint32_t tp, std::uint32_t si,
                                                             std::uint32_t tr) const {
  return Run(tp, si, tr).Info.CurveEvals;
}
std::uint32_t MethodRules::QTRExcludeDuration(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const {
  return Run(tp, si, tr).Info.ExclDuration;
}

void MethodRules::WTRTune(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, const Tune& tune) {
  TuneRun& run = Run(tp, si, tr);
  run.TuneId = AddTune(tune);
  CleanupTunes();
}
void MethodRules::WTRNumRecs(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, std::uint32_t records) {
  Store(Run(tp, si, tr).Records, records);
}
void MethodRules::WTRSettleDelay(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, std::uint32_t delay) {
  Store(Run(tp, si, tr).SettleDelay, delay);
}
void MethodRules::WTRStartTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr,
                                  DDInfo::Triggers trigger) {
  Store(Run(tp, si, tr).Info.StartTrigger, trigger);
}
void MethodRules::WTRStartTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, double value) {
  Store(Run(tp, si, tr).Info.StartTriggerValue, value);
}
void MethodRules::WTREndTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr,
                                DDInfo::Triggers trigger) {
  Store(Run(tp, si, tr).Info.EndTrigger, trigger);
}
void MethodRules::WTREndTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, double value) {
  Store(Run(tp, si, tr).Info.EndTriggerValue, value);
}
void MethodRules::WTRSpecEvalMethod(std::uint32_t tp, std::uint32_t si, std::uint32_t tr,
                                    const std::vector<CurveEval>& evals) {
  Store(Run(tp, si, tr).Info.CurveEvals, evals);
}
void MethodRules::WTRExcludeDuration(std::uint32_t tp, std::uint32_t si, std::uint32_t tr,
                                     std::uint32_t duration) {
  Store(Run(tp, si, tr).Info.ExclDuration, duration);
}

// ---- Lists of the data-dependent logic -------------------------------------------------

void MethodRules::WInclusionList(const std::vector<DDFilter>& filters) { Store(Inclusions, filters); }
void MethodRules::WExclusionList(const std::vector<DDFilter>& filters) { Store(Exclusions, filters); }

}  // namespace TslBL
