// Any method, in which tunes and runs are shared or missing, and any edits of it. Rules take it as it is,
// tell its faults and never change it by asking; an edit that asks for what is not there is refused and
// leaves it as it was.

#include <fuzz/Records.h>
#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <cstddef>
#include <cstdint>

using namespace TslBL;
using namespace fuzz;

namespace {

// Few ids, so that they meet.
std::uint32_t Id(Input& input) {
  const std::uint8_t pick = input.Take<std::uint8_t>();
  return pick < 250 ? pick % 8 : input.Take<std::uint32_t>();
}

Tune AnyTune(Input& input) {
  static const Tune standard = DevTuneRules(Probes::ESI);
  Tune tune = standard;
  Control& control = tune.ControlData;
  const std::size_t parts = input.Below(64);
  if (parts & 1) control.PolarityType = static_cast<PolarityTypes>(input.Below(3));
  if (parts & 2) control.MZLow = input.Real(), control.MZHi = input.Real();
  if (parts & 4)
    control.Type = static_cast<Control::Types>(input.Below(3)), control.MZStepSize = input.Real();
  if (parts & 8) control.CapExit.Type = IOPoint::CalibratedType, tune.Q1CalPts[0].MZ = input.Real();
  if (parts & 16) control.PulseCountDelay = input.Integer(), control.ScansPerSpec = input.Integer();
  if (parts & 32)
    tune.MZCalPts[0].MZ = input.Real(), tune.Source.Type = static_cast<Probes::ProbeTypes>(input.Below(5));
  return tune;
}

Method AnyMethod(Input& input) {
  Method method;
  for (std::size_t i = input.Below(6); i > 0; --i) method.Tunes[Id(input)] = AnyTune(input);
  for (std::size_t i = input.Below(10); i > 0; --i) {
    TuneRun run(Id(input), input.Integer());
    run.SettleDelay = input.Integer();
    run.Info.Type = static_cast<DDInfo::Types>(input.Below(5));
    run.Info.StartTrigger = static_cast<DDInfo::Triggers>(input.Below(6));
    method.TuneRuns[Id(input)] = run;
  }
  for (std::size_t i = input.Below(4); i > 0; --i) {
    TimePeriod& period = method.TimePeriods.emplace_back();
    period.Loops = input.Integer();
    period.Timeout = input.Integer();
    for (std::size_t j = input.Below(5); j > 0; --j) {
      auto& item = period.Sequence.emplace_back();
      for (std::size_t k = input.Below(4); k > 0; --k) item.push_back(Id(input));
    }
  }
  for (std::size_t i = input.Below(4); i > 0; --i)
    method.ValveMethod.AddState(timebase::MSEC(static_cast<std::int32_t>(input.Integer())), DiverterValve(0));
  return method;
}

void CheckFaults(const MethodRules& rules) {
  const std::string before = ToBytes(rules);
  rules.QLastError();
  const bool valid = rules.Validate();
  Require(valid == rules.QLastError().empty(), "an invalid method has a text");
  Require(valid == rules.QFaults().empty(), "a method is valid if it has no faults");
  Require(valid || !rules.IsProbeCompatible(Probes::ESI), "an invalid method suits no probe");
  rules.QLastError();
  Require(ToBytes(rules) == before, "a check leaves the method");
}

void AskDurations(const MethodRules& rules) {
  rules.QDuration();
  if (!rules.Validate()) return;
  // Of a valid method all can be told.
  for (std::uint32_t tp = 0; tp < rules.QNumTimePeriods(); ++tp) {
    rules.QTimePeriodPolarity(tp);
    for (std::uint32_t si = 0; si < rules.QNumSeqItems(tp); ++si)
      Require(rules.QSIDuration(tp, si) >= rules.QSITuneDuration(tp, si),
              "an item takes its spectrum's time");
  }
}

// Whether what is derived is, once it has been worked out.
void CheckSettled(const MethodRules& rules) {
  const MethodRules once(rules.QPolSwitchTime(), rules);
  Require(ToBytes(MethodRules(rules.QPolSwitchTime(), once)) == ToBytes(once), "delays are worked out once");
  const Method stored = rules.operator Method();
  const MethodRules again(rules.QPolSwitchTime(), stored);
  Require(ToBytes(again.operator Method()) ==
              ToBytes(MethodRules(rules.QPolSwitchTime(), again).operator Method()),
          "a stored method stays");
}

void Edit(MethodRules& rules, Input& input) {
  const std::size_t which = input.Below(20);
  const auto tp = static_cast<std::uint32_t>(input.Below(5));
  const auto si = static_cast<std::uint32_t>(input.Below(6));
  const auto tr = static_cast<std::uint32_t>(input.Below(4));
  const auto direction = static_cast<MethodRules::Direction>(input.Below(3));
  const auto probe = static_cast<Probes::ProbeTypes>(input.Below(4));
  switch (which) {
    case 0:
      rules.InsertTimePeriod();
      break;
    case 1:
      rules.InsertTimePeriod(probe);
      break;
    case 2:
      rules.RemoveTimePeriod(tp);
      break;
    case 3:
      rules.MoveTimePeriod(tp, direction);
      break;
    case 4:
      rules.InsertSeqItem(tp);
      break;
    case 5:
      rules.InsertSeqItem(tp, probe);
      break;
    case 6:
      rules.RemoveSeqItem(tp, si);
      break;
    case 7:
      rules.MoveSeqItem(tp, si, direction);
      break;
    case 8:
      rules.AddTuneRun(probe);
      break;
    case 9:
      rules.Sort();
      break;
    case 10:
      rules.WTRDDType(tp, si, tr, DDInfo::TuneChange);
      break;
    case 11:
      rules.WTRDDType(tp, si, tr, static_cast<DDInfo::Types>(input.Below(4)));
      break;
    case 12:
      rules.WTRTune(tp, si, tr, AnyTune(input));
      break;
    case 13:
      rules.WTRTune(tp, si, tr, rules.QTRTune(0, 0, 0));
      break;
    case 14:
      rules.WTPTimeout(tp, input.Integer());
      break;
    case 15:
      rules.WTRSettleDelay(tp, si, tr, input.Integer());
      break;
    case 16:
      rules.WTRNumRecs(tp, si, tr, input.Integer());
      break;
    case 17:
      rules.WPolSwitchTime(input.Real());
      break;
    case 18:
      rules.WTPSettleDelay(tp, input.Integer());
      break;
    default:
      rules = AnyMethod(input);
  }
}

void TryEdit(MethodRules& rules, Input& input) {
  const std::string before = ToBytes(rules);
  const bool modified = rules.IsModified();
  try {
    Edit(rules, input);
  } catch (const std::out_of_range&) {
    Require(ToBytes(rules) == before && rules.IsModified() == modified, "a refused edit leaves the method");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const double seconds = input.Real();
  MethodRules rules(seconds, AnyMethod(input));
  CheckFaults(rules);
  for (int edits = 0; edits < 40 && !input.Empty(); ++edits) TryEdit(rules, input);
  CheckFaults(rules);
  AskDurations(rules);
  CheckSettled(rules);
  return 0;
}
