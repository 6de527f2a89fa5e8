#include <tool/commands/method/MethodEdit.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/chain/ChainFile.h>
#include <tool/commands/method/MethodPlace.h>
#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/TimeText.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace TslTool {
namespace {

using TslBL::DDFilter;
using TslBL::DDInfo;
using TslBL::MethodRules;
using TslBL::Probes;

const EditResult kDoneEdit = {false, ""};

EditResult Refused(const std::string& text) { return {true, text}; }

struct Edit {
  std::string name;   // as it was typed, before the '='
  std::string field;  // its last word
  std::string value;
};

struct RunAt {
  std::uint32_t tp, si, tr;
};

// ---- Values ----------------------------------------------------------------------------

[[noreturn]] void ThrowNoneOf(const Edit& edit, const std::string& known) {
  throw UsageError(fmt::format("{}: \"{}\" is not one of {}", edit.name, edit.value, known));
}

template <class E, std::size_t N>
E OneOf(const Edit& edit, std::wstring (*toText)(E), const E (&values)[N]) {
  std::vector<std::string> names;
  for (const E value : values) {
    names.push_back(TslCommon::ToUtf8(toText(value)));
    if (SameText(edit.value, names.back())) return value;
  }
  ThrowNoneOf(edit, fmt::format("{}", fmt::join(names, ", ")));
}

bool Switch(const Edit& edit) {
  bool value = false;
  Parse(edit.name, edit.value, value);
  return value;
}

DDInfo::Types TypeOf(const Edit& edit) {
  return OneOf(edit, &DDInfo::CvtType,
               {DDInfo::None, DDInfo::FractionCollect, DDInfo::PeakPark, DDInfo::TuneChange});
}

DDInfo::Triggers StartOf(const Edit& edit) {
  return OneOf(edit, &DDInfo::CvtTrigger,
               {DDInfo::AbsAmplAboveThres, DDInfo::SNAboveThres, DDInfo::TICAboveThres});
}

DDInfo::Triggers EndOf(const Edit& edit) {
  return OneOf(edit, &DDInfo::CvtTrigger,
               {DDInfo::StartTriggerNotDetected, DDInfo::TriggerTimeout, DDInfo::AbsAmplAboveThres,
                DDInfo::SNAboveThres, DDInfo::TICAboveThres});
}

// What a new run begins with: the default tune of a probe, or one from a file.
struct NewTune {
  Probes::ProbeTypes probe;
  std::optional<TslBL::Tune> tune;
};

NewTune NewTuneOf(const Edit& edit) {
  const auto names = NamesOf<Probes::ProbeTypes>();
  const auto known =
      std::ranges::find_if(names, [&](const std::string& name) { return SameText(name, edit.value); });
  if (known != names.end()) return {static_cast<Probes::ProbeTypes>(known - names.begin()), {}};
  const TslBL::Tune tune = Load(edit.value);
  return {tune.Source.Type, tune};
}

// LOW-HIGH in m/z, with @START-END in the units of the method's times.
DDFilter FilterOf(const Edit& edit) {
  const std::size_t at = edit.value.find('@');
  const RealRange mz = ParseRealRange(edit.name, std::string_view(edit.value).substr(0, at));
  if (at == std::string::npos) return {mz.from, mz.to, 0, 0};
  const CountRange time = ParseCountRange(edit.name, std::string_view(edit.value).substr(at + 1));
  return {mz.from, mz.to, time.from, time.to};
}

std::vector<DDFilter> WithFilter(std::vector<DDFilter> filters, const Edit& edit) {
  if (SameText(edit.value, "none")) return {};
  filters.push_back(FilterOf(edit));
  return filters;
}

// ---- The method ------------------------------------------------------------------------

EditResult AddPeriod(MethodRules& rules, const Edit& edit) {
  if (rules.QNumTimePeriods() >= MethodRules::QMaxTimePeriods())
    return Refused(
        fmt::format("the instrument takes {} time periods at most", MethodRules::QMaxTimePeriods()));
  const NewTune added = NewTuneOf(edit);
  const std::uint32_t tp = rules.InsertTimePeriod(added.probe);
  if (added.tune) rules.WTRTune(tp, 0, 0, *added.tune);
  // Its loops follow from its length, and that of its tune may be another than the default's.
  rules.WTPTimeout(tp, rules.QTPTimeout(tp));
  return kDoneEdit;
}

EditResult SortItems(MethodRules& rules, const Edit& edit) {
  if (!SameText(edit.value, "sort")) ThrowNoneOf(edit, "sort");
  rules.Sort();
  return kDoneEdit;
}

EditResult SetValve(MethodRules& rules, const Edit& edit, const std::string& time) {
  using TslCommon::DiverterValve;
  const std::uint32_t ms = ParseMilliseconds(edit.name, time);
  if (ms > 0x7FFFFFFF)
    throw UsageError(fmt::format("{}: the valve counts no more than 2147483647 ms", edit.name));
  const TslCommon::timebase::MSEC start(static_cast<std::int32_t>(ms));
  TslBL::DiverterValveMethod program;
  if (SameText(edit.value, "none")) {
    TslBL::DiverterValveMethod old = rules.QValveMethod();
    if (old.IsEmpty()) return kDoneEdit;
    auto entry = old.QFirstState();
    do {
      if (entry.first != start) program.AddState(entry.first, entry.second);
    } while (old.QNextState(entry));
  } else {
    program = rules.QValveMethod();
    const bool isSource = SameText(edit.value, "source");
    if (!isSource && !SameText(edit.value, "waste")) ThrowNoneOf(edit, "source, waste, none");
    program.AddState(start, DiverterValve(isSource ? DiverterValve::kToSource : DiverterValve::kToWaste));
  }
  rules.WValveMethod(program);
  return kDoneEdit;
}

struct MethodField {
  const char* name;
  const char* values;
  const char* meaning;
  EditResult (*set)(MethodRules& rules, const Edit& edit);
};

constexpr MethodField kMethodFields[] = {
    {"Desc", "TEXT", "what the method is for",
     [](MethodRules& rules, const Edit& edit) {
       rules.WDescription(TslCommon::FromUtf8(edit.value));
       return kDoneEdit;
     }},
    {"Period", "PROBE|TUNE", "one more time period, with the default tune of a probe or one from a file",
     &AddPeriod},
    {"Items", "sort", "orders the items of each period by polarity and low m/z", &SortItems},
    {"Inclusion", "LOW-HIGH[@START-END]|none", "one more m/z window that may trigger, or none at all",
     [](MethodRules& rules, const Edit& edit) {
       rules.WInclusionList(WithFilter(rules.QInclusionList(), edit));
       return kDoneEdit;
     }},
    {"Exclusion", "LOW-HIGH[@START-END]|none", "the same of what may not",
     [](MethodRules& rules, const Edit& edit) {
       rules.WExclusionList(WithFilter(rules.QExclusionList(), edit));
       return kDoneEdit;
     }},
};

// ---- Time periods ----------------------------------------------------------------------

EditResult SetTimeout(MethodRules& rules, const Edit& edit, std::uint32_t tp) {
  const bool isFree = SameText(edit.value, "free");
  const std::uint32_t timeout = isFree ? MethodRules::FreeRun : ParseMilliseconds(edit.name, edit.value);
  if (!isFree && timeout == MethodRules::FreeRun)
    throw UsageError(fmt::format("{}: that many milliseconds stand for no end; write free", edit.name));
  rules.WTPTimeout(tp, timeout);
  return kDoneEdit;
}

EditResult SetLoops(MethodRules& rules, const Edit& edit, std::uint32_t tp) {
  const std::uint32_t loops = ParseCount(edit.name, edit.value);
  if (rules.QTPTimeout(tp) != MethodRules::FreeRun)
    return Refused("the loops of a time period follow from its Timeout, unless that is free");
  rules.WTPNumLoops(tp, loops);
  return kDoneEdit;
}

EditResult AddItem(MethodRules& rules, const Edit& edit, std::uint32_t tp) {
  const NewTune added = NewTuneOf(edit);
  const std::uint32_t si = rules.InsertSeqItem(tp, added.probe);
  if (added.tune) rules.WTRTune(tp, si, 0, *added.tune);
  return kDoneEdit;
}

struct PeriodField {
  const char* name;
  const char* values;
  const char* meaning;
  EditResult (*set)(MethodRules& rules, const Edit& edit, std::uint32_t tp);
};

constexpr PeriodField kPeriodFields[] = {
    {"Save", "on|off", "whether its data are kept",
     [](MethodRules& rules, const Edit& edit, std::uint32_t tp) {
       rules.WTPSave(tp, Switch(edit));
       return kDoneEdit;
     }},
    {"Timeout", "TIME|free", "how long it lasts; free: without end", &SetTimeout},
    {"Loops", "N", "how often the sequence runs in a time period without end", &SetLoops},
    {"Item", "PROBE|TUNE", "one more item in its sequence", &AddItem},
};

// ---- Runs ------------------------------------------------------------------------------

EditResult SetEvals(MethodRules& rules, const Edit& edit, const RunAt& at) {
  const bool isNone = SameText(edit.value, "none");
  rules.WTRSpecEvalMethod(at.tp, at.si, at.tr,
                          isNone ? std::vector<TslBL::CurveEval>() : LoadChain(edit.value));
  return kDoneEdit;
}

struct RunField {
  const char* name;
  const char* values;
  const char* meaning;
  EditResult (*set)(MethodRules& rules, const Edit& edit, const RunAt& at);
};

constexpr RunField kRunFields[] = {
    {"Tune", "FILE", "its tune, from a file",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTRTune(at.tp, at.si, at.tr, Load(edit.value));
       return kDoneEdit;
     }},
    {"Records", "N", "spectra to collect; a binary method keeps 1",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTRNumRecs(at.tp, at.si, at.tr, ParseCount(edit.name, edit.value));
       return kDoneEdit;
     }},
    {"Type", "None|FractionCollect|PeakPark|TuneChange",
     "what a trigger starts; TuneChange adds the run to change to",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTRDDType(at.tp, at.si, at.tr, TypeOf(edit));
       return kDoneEdit;
     }},
    {"StartTrigger", "AbsAmplAboveThres|SNAboveThres|TICAboveThres", "what starts it",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTRStartTrigger(at.tp, at.si, at.tr, StartOf(edit));
       return kDoneEdit;
     }},
    {"StartTriggerValue", "X", "the threshold of it",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTRStartTriggerValue(at.tp, at.si, at.tr, ParseReal(edit.name, edit.value));
       return kDoneEdit;
     }},
    {"EndTrigger", "StartTriggerNotDetected|TriggerTimeout|...", "what ends it; also any that starts",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTREndTrigger(at.tp, at.si, at.tr, EndOf(edit));
       return kDoneEdit;
     }},
    {"EndTriggerValue", "X", "the threshold or time of it",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTREndTriggerValue(at.tp, at.si, at.tr, ParseReal(edit.name, edit.value));
       return kDoneEdit;
     }},
    {"ExcludeDuration", "N", "for how long its m/z may not trigger again",
     [](MethodRules& rules, const Edit& edit, const RunAt& at) {
       rules.WTRExcludeDuration(at.tp, at.si, at.tr, ParseCount(edit.name, edit.value));
       return kDoneEdit;
     }},
    {"Evals", "CHAIN|none", "the chain that evaluates a spectrum before it is held against the trigger",
     &SetEvals},
};

// Any other field of a run is one of its tune.
EditResult EditTune(MethodRules& rules, const Edit& edit, const RunAt& at) {
  TslBL::DevTuneRules tune(rules.QTRTune(at.tp, at.si, at.tr));
  const auto change = ReadTuneEdit(tune, edit.field + "=" + edit.value);
  if (SameText(edit.field, "InitSettleDelay"))
    return Refused("in a method this delay follows from the tune before it in the sequence");
  const std::vector<TslBL::MZCalPt> calibration = tune.QMZCalPts();
  EditResult result = change->Apply(tune);
  // A change of a point does not look at the points beside it.
  if (tune.QMZCalPts() != calibration && tune.CheckMZCalPts(tune.QMZCalPts()) == TslBL::DevTuneRules::Error)
    return Refused(TslCommon::ToUtf8(tune.QLastError()));
  if (!result.refused) rules.WTRTune(at.tp, at.si, at.tr, tune);
  return result;
}

// ---- Places ----------------------------------------------------------------------------

EditResult RemoveOrMove(MethodRules& rules, const Edit& edit, const MethodPlace& place) {
  if (place.run) return Refused("a run comes and goes with the Type of the run before it");
  if (SameText(edit.value, "remove")) {
    if (place.item) return rules.RemoveSeqItem(place.period, *place.item), kDoneEdit;
    if (rules.QNumTimePeriods() <= MethodRules::QMinTimePeriods())
      return Refused("a method keeps one time period at least");
    return rules.RemoveTimePeriod(place.period), kDoneEdit;
  }
  const bool isUp = SameText(edit.value, "up");
  if (!isUp && !SameText(edit.value, "down")) ThrowNoneOf(edit, "remove, up, down");
  const auto direction = isUp ? MethodRules::ToBeginning : MethodRules::ToEnd;
  if (place.item) {
    rules.MoveSeqItem(place.period, *place.item, direction);
  } else {
    rules.MoveTimePeriod(place.period, direction);
  }
  return kDoneEdit;
}

template <class Fields>
auto FindField(const Fields& fields, const std::string& name) {
  return std::ranges::find_if(fields, [&](const auto& field) { return SameText(field.name, name); });
}

template <class Fields>
std::string NamesOfFields(const Fields& fields) {
  std::vector<std::string> names;
  for (const auto& field : fields) names.emplace_back(field.name);
  return fmt::format("{}", fmt::join(names, ", "));
}

template <class Fields>
const auto& RequireField(const Fields& fields, const Edit& edit, const char* what) {
  const auto found = FindField(fields, edit.field);
  if (found == std::end(fields))
    throw UsageError(fmt::format("{}: {} has no field \"{}\"; it has {}", edit.name, what, edit.field,
                                 NamesOfFields(fields)));
  return *found;
}

EditResult EditPlace(MethodRules& rules, Edit edit) {
  const std::size_t dot = edit.name.find('.');
  const MethodPlace place = ParseMethodPlace(rules, std::string_view(edit.name).substr(0, dot));
  if (dot == std::string::npos) return RemoveOrMove(rules, edit, place);
  edit.field = edit.name.substr(dot + 1);
  if (!place.item) return RequireField(kPeriodFields, edit, "a time period").set(rules, edit, place.period);
  const RunAt at = {place.period, *place.item, place.run.value_or(0)};
  if (rules.QSINumTuneRuns(at.tp, at.si) == 0) return Refused("the item holds no run");
  const auto found = FindField(kRunFields, edit.field);
  return found != std::end(kRunFields) ? found->set(rules, edit, at) : EditTune(rules, edit, at);
}

EditResult EditWhole(MethodRules& rules, Edit edit) {
  edit.field = edit.name;
  const std::size_t at = edit.name.find('@');
  if (at != std::string::npos && SameText(edit.name.substr(0, at), "Valve"))
    return SetValve(rules, edit, edit.name.substr(at + 1));
  return RequireField(kMethodFields, edit, "a method").set(rules, edit);
}

template <class Fields>
void AddForms(const char* place, const Fields& fields, std::string& text) {
  for (const auto& field : fields)
    text += fmt::format("  {}{}={}\n      {}\n", place, field.name, field.values, field.meaning);
}

}  // namespace

EditResult EditMethod(MethodRules& rules, const std::string& text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos || equals == 0) throw UsageError("\"" + text + "\" is not FIELD=VALUE");
  const Edit edit = {text.substr(0, equals), "", text.substr(equals + 1)};
  try {
    return IsMethodPlace(edit.name) ? EditPlace(rules, edit) : EditWhole(rules, edit);
  } catch (const std::out_of_range&) {
    return Refused("the run, or its tune, is not in the method: see tslbl method check");
  }
}

std::string MethodEditForms() {
  std::string text;
  AddForms("", kMethodFields, text);
  text += "  Valve@TIME=source|waste|none\n      where the valve goes at a time from the start on\n";
  AddForms("P0.", kPeriodFields, text);
  AddForms("P0/0.", kRunFields, text);
  text +=
      "  P0/0.FIELD=VALUE\n      a field of its tune, as tslbl tune set takes it; the run has that tune "
      "alone then\n"
      "  P0=remove|up|down, P0/0=remove|up|down\n      takes a time period or an item away, or moves it\n";
  return text;
}

}  // namespace TslTool
