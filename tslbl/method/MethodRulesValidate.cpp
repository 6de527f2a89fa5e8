// Whether a method may be run. Every text is one that users know.

#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/rules/DevTuneRules.h>

namespace TslBL {
namespace {

constexpr const wchar_t* kTuneInvalid = L"Tune %d is invalid.  %s";
constexpr const wchar_t* kTuneRunInvalid = L"Tune run %d is invalid.  %s";
constexpr const wchar_t* kTimePeriodInvalid = L"Time period %d is invalid.  %s";
constexpr const wchar_t* kSeqItemInvalid = L"Sequence item %d contains invalid tune run id.  %s";

constexpr const wchar_t* kTuneIdInvalid = L"Tune id is invalid.";
constexpr const wchar_t* kTuneRunIdInvalid = L"Tune run id is invalid.";

// Each of these gives the text of the first fault, or none.

// `rules` is at hand for any tune, as a new one costs as much as the check.
std::wstring FaultOfTune(std::uint32_t id, const Tune& tune, DevTuneRules& rules) {
  if (id == Method::INVALID_ID) return kTuneIdInvalid;
  rules = tune;
  const std::vector<DevTuneRules::Fault> faults = rules.QFaults();
  return faults.empty() ? std::wstring() : faults.front().text;
}

std::wstring FaultOfTunes(const MethodRules& method) {
  DevTuneRules rules{Tune()};
  for (const auto& [id, tune] : method.Tunes) {
    const std::wstring fault = FaultOfTune(id, tune, rules);
    if (!fault.empty()) return FillText(kTuneInvalid, id, fault);
  }
  return {};
}

std::wstring FaultOfTuneRun(std::uint32_t id, const TuneRun& run, const Method& method) {
  if (id == Method::INVALID_ID) return kTuneRunIdInvalid;
  if (!method.Tunes.contains(run.TuneId)) return kTuneIdInvalid;
  if (run.Records == 0) return L"There are no records to collect.";
  // These two end an action and cannot begin one.
  const DDInfo::Triggers trigger = run.Info.StartTrigger;
  const bool canStart = trigger != DDInfo::StartTriggerNotDetected && trigger != DDInfo::TriggerTimeout;
  return canStart ? L"" : L"Invalid start trigger.";
}

std::wstring FaultOfTuneRuns(const MethodRules& method) {
  for (const auto& [id, run] : method.TuneRuns) {
    const std::wstring fault = FaultOfTuneRun(id, run, method);
    if (!fault.empty()) return FillText(kTuneRunInvalid, id, fault);
  }
  return {};
}

std::wstring FaultOfSeqItem(const std::vector<std::uint32_t>& item, const Method& method) {
  if (item.empty()) return L"The sequence item contains no tunes.";
  for (std::size_t tr = 0; tr < item.size(); ++tr) {
    const auto run = method.TuneRuns.find(item[tr]);
    if (run == method.TuneRuns.end()) return kTuneRunIdInvalid;
    const bool isLast = tr + 1 == item.size();
    if (isLast && run->second.Info.Type == DDInfo::TuneChange)
      return L"The tune to change to is not defined.";
  }
  return {};
}

std::wstring FaultOfTimePeriod(const TimePeriod& period, const Method& method) {
  if (period.Loops == 0) return L"There are no loops.";
  if (period.Sequence.empty()) return L"The sequence is empty.";
  for (std::size_t si = 0; si < period.Sequence.size(); ++si) {
    const std::wstring fault = FaultOfSeqItem(period.Sequence[si], method);
    if (!fault.empty()) return FillText(kSeqItemInvalid, si, fault);
  }
  return {};
}

std::wstring FaultOfTimePeriods(const MethodRules& method) {
  if (method.TimePeriods.empty()) return L"The method does not contain any time periods.";
  for (std::size_t tp = 0; tp < method.TimePeriods.size(); ++tp) {
    const std::wstring fault = FaultOfTimePeriod(method.TimePeriods[tp], method);
    if (!fault.empty()) return FillText(kTimePeriodInvalid, tp, fault);
  }
  return {};
}

std::wstring FaultOfValve(const MethodRules& method) {
  DiverterValveMethod program = method.QValveMethod();
  if (program.IsEmpty()) return {};
  auto state = program.QFirstState();
  if (state.first.count != 0) return L"Start Time of first Diverter Valve Method state must be equal to 0.0.";
  const double end = method.QDuration() * 1000.0;
  // Wide, so that the sum holds.
  const std::int64_t gap = MinutesToMS(MethodRules::QMinValveDuration());
  for (std::int64_t before = 0; program.QNextState(state); before = state.first.count) {
    if (state.first.count > end)
      return L"Diverter state Start Time cannot exceed acquisition method duration.";
    if (before + gap > state.first.count)
      return FillText(L"Diverter Valve Method Start Times must be at least %4.2f minutes apart.",
                      MethodRules::QMinValveDuration());
  }
  return {};
}

std::wstring FaultOfProbes(const Method& method, Probes::ProbeTypes probe) {
  for (const auto& [id, tune] : method.Tunes) {
    if (tune.Source.Type == probe) continue;
    return FillText(L"Current ion source is %s and the tune to be loaded is %s.  They are not compatible.",
                    Probes::GetNameNoId(probe), Probes::GetNameNoId(tune.Source.Type));
  }
  return {};
}

}  // namespace

// A fault is kept for the user, no fault leaves the text of the last one.
bool MethodRules::Holds(const std::wstring& fault) const {
  if (!fault.empty()) LastError = fault;
  return fault.empty();
}

bool MethodRules::Validate() const {
  return Holds(FaultOfTunes(*this)) && Holds(FaultOfTuneRuns(*this)) && Holds(FaultOfTimePeriods(*this)) &&
         Holds(FaultOfValve(*this));
}

bool MethodRules::IsProbeCompatible(Probes::ProbeTypes probe) const {
  if (!Probes::IsUsable(probe))
    return Holds(FillText(L"Detected probe [ %s ] cannot be used.", Probes::GetName(probe)));
  return Validate() && Holds(FaultOfProbes(*this, probe));
}

}  // namespace TslBL
