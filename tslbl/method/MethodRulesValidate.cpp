// Whether a method may be run. Every text is one that users know.

#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <functional>

namespace TslBL {
namespace {

constexpr const wchar_t* kTuneInvalid = L"Tune %d is invalid.  %s";
constexpr const wchar_t* kTuneRunInvalid = L"Tune run %d is invalid.  %s";
constexpr const wchar_t* kTimePeriodInvalid = L"Time period %d is invalid.  %s";
constexpr const wchar_t* kSeqItemInvalid = L"Sequence item %d contains invalid tune run id.  %s";

constexpr const wchar_t* kTuneIdInvalid = L"Tune id is invalid.";
constexpr const wchar_t* kTuneRunIdInvalid = L"Tune run id is invalid.";

// Takes the text of a fault, and tells whether to look for more.
using Found = std::function<bool(const std::wstring& text)>;

// Each of these finds the faults of its part in the order that users know, and is false once one was
// found that is enough.

// `rules` is at hand for any tune, as a new one costs as much as the check.
bool TuneHolds(std::uint32_t id, const Tune& tune, DevTuneRules& rules, const Found& found) {
  if (id == Method::INVALID_ID && !found(kTuneIdInvalid)) return false;
  rules = tune;
  return std::ranges::all_of(rules.QFaults(),
                             [&](const DevTuneRules::Fault& fault) { return found(fault.text); });
}

bool TunesHold(const MethodRules& method, const Found& found) {
  DevTuneRules rules{Tune()};
  return std::ranges::all_of(method.Tunes, [&](const auto& entry) {
    const auto inTune = [&](const std::wstring& text) {
      return found(FillText(kTuneInvalid, entry.first, text));
    };
    return TuneHolds(entry.first, entry.second, rules, inTune);
  });
}

bool TuneRunHolds(std::uint32_t id, const TuneRun& run, const Method& method, const Found& found) {
  if (id == Method::INVALID_ID && !found(kTuneRunIdInvalid)) return false;
  if (!method.Tunes.contains(run.TuneId) && !found(kTuneIdInvalid)) return false;
  if (run.Records == 0 && !found(L"There are no records to collect.")) return false;
  // These two end an action and cannot begin one.
  const DDInfo::Triggers trigger = run.Info.StartTrigger;
  const bool canStart = trigger != DDInfo::StartTriggerNotDetected && trigger != DDInfo::TriggerTimeout;
  return canStart || found(L"Invalid start trigger.");
}

bool TuneRunsHold(const MethodRules& method, const Found& found) {
  return std::ranges::all_of(method.TuneRuns, [&](const auto& entry) {
    const auto inRun = [&](const std::wstring& text) {
      return found(FillText(kTuneRunInvalid, entry.first, text));
    };
    return TuneRunHolds(entry.first, entry.second, method, inRun);
  });
}

bool SeqItemHolds(const std::vector<std::uint32_t>& item, const Method& method, const Found& found) {
  if (item.empty()) return found(L"The sequence item contains no tunes.");
  for (const std::uint32_t& id : item) {
    const auto run = method.TuneRuns.find(id);
    const bool isLast = &id == &item.back();
    if (run == method.TuneRuns.end()) {
      if (!found(kTuneRunIdInvalid)) return false;
    } else if (isLast && run->second.Info.Type == DDInfo::TuneChange) {
      return found(L"The tune to change to is not defined.");
    }
  }
  return true;
}

bool TimePeriodHolds(const TimePeriod& period, const Method& method, const Found& found) {
  if (period.Loops == 0 && !found(L"There are no loops.")) return false;
  if (period.Sequence.empty()) return found(L"The sequence is empty.");
  for (std::size_t si = 0; si < period.Sequence.size(); ++si) {
    const auto inItem = [&](const std::wstring& text) { return found(FillText(kSeqItemInvalid, si, text)); };
    if (!SeqItemHolds(period.Sequence[si], method, inItem)) return false;
  }
  return true;
}

bool TimePeriodsHold(const MethodRules& method, const Found& found) {
  if (method.TimePeriods.empty()) return found(L"The method does not contain any time periods.");
  for (std::size_t tp = 0; tp < method.TimePeriods.size(); ++tp) {
    const auto inPeriod = [&](const std::wstring& text) {
      return found(FillText(kTimePeriodInvalid, tp, text));
    };
    if (!TimePeriodHolds(method.TimePeriods[tp], method, inPeriod)) return false;
  }
  return true;
}

bool ValveHolds(const MethodRules& method, const Found& found) {
  DiverterValveMethod program = method.QValveMethod();
  if (program.IsEmpty()) return true;
  auto state = program.QFirstState();
  if (state.first.count != 0 &&
      !found(L"Start Time of first Diverter Valve Method state must be equal to 0.0."))
    return false;
  const double end = method.QDuration() * 1000.0;
  // Wide, so that the sum holds.
  const std::int64_t gap = MinutesToMS(MethodRules::QMinValveDuration());
  for (std::int64_t before = state.first.count; program.QNextState(state); before = state.first.count) {
    if (state.first.count > end &&
        !found(L"Diverter state Start Time cannot exceed acquisition method duration."))
      return false;
    if (before + gap > state.first.count &&
        !found(FillText(L"Diverter Valve Method Start Times must be at least %4.2f minutes apart.",
                        MethodRules::QMinValveDuration())))
      return false;
  }
  return true;
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
  const Found first = [this](const std::wstring& text) { return Holds(text); };
  return TunesHold(*this, first) && TuneRunsHold(*this, first) && TimePeriodsHold(*this, first) &&
         ValveHolds(*this, first);
}

std::vector<MethodRules::Fault> MethodRules::QFaults() const {
  std::vector<Fault> faults;
  const auto all = [&faults](Part part) {
    return [&faults, part](const std::wstring& text) {
      faults.push_back({part, text});
      return true;
    };
  };
  TunesHold(*this, all(Part::Tunes));
  TuneRunsHold(*this, all(Part::TuneRuns));
  TimePeriodsHold(*this, all(Part::TimePeriods));
  ValveHolds(*this, all(Part::Valve));
  return faults;
}

bool MethodRules::IsProbeCompatible(Probes::ProbeTypes probe) const {
  if (!Probes::IsUsable(probe))
    return Holds(FillText(L"Detected probe [ %s ] cannot be used.", Probes::GetName(probe)));
  return Validate() && Holds(FaultOfProbes(*this, probe));
}

}  // namespace TslBL
