#include <tool/commands/method/MethodSheet.h>

#include <fmt/format.h>

#include <tool/commands/method/MethodFaults.h>
#include <tool/commands/method/MethodPlace.h>
#include <tool/commands/method/MethodTimeline.h>
#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/FindUserField.h>
#include <tool/frame/TimeText.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <stdexcept>
#include <vector>

namespace TslTool {
namespace {

using TslBL::DDInfo;
using TslBL::MethodRules;
using TslBL::Tune;
using TslCommon::ToUtf8;

std::string Delay(double seconds) { return seconds > 0.0 ? ShownSeconds(seconds) : "-"; }

std::string RangeText(const Tune& tune) {
  const auto [low, high] = TslBL::QMassRange(tune);
  return low == high ? fmt::format("{:.6g}", low) : fmt::format("{:.6g}-{:.6g}", low, high);
}

std::string TriggerText(DDInfo::Triggers trigger, double value) {
  return fmt::format("{} {}", ToUtf8(DDInfo::CvtTrigger(trigger)), value);
}

std::string ActionText(const DDInfo& info) {
  if (info.Type == DDInfo::None) return "";
  return fmt::format("{} from {} to {}, then excluded for {}", ToUtf8(DDInfo::CvtType(info.Type)),
                     TriggerText(info.StartTrigger, info.StartTriggerValue),
                     TriggerText(info.EndTrigger, info.EndTriggerValue), info.ExclDuration);
}

std::string EachText(const Tune& tune) {
  try {
    return ShownSeconds(TslBL::DevTuneRules::QExactDuration(tune) * 1e-6);
  } catch (const std::runtime_error&) {
    return "unknown";
  }
}

// The fields by which the tunes of a ramp can be told apart; none of tunes that differ in more.
std::vector<TslBL::TuneField::Id> WalkedFields(const MethodRules& rules) {
  constexpr std::size_t kMost = 2;
  std::vector<TslBL::TuneField::Id> fields;
  for (const TslBL::FieldRow& row : TslBL::kFieldTable) {
    if (!row.IsRampable()) continue;
    const bool differs = std::ranges::any_of(rules.Tunes, [&](const auto& entry) {
      return TslBL::FieldValue(entry.second, row.id) !=
             TslBL::FieldValue(rules.Tunes.begin()->second, row.id);
    });
    if (differs) fields.push_back(row.id);
  }
  return fields.size() <= kMost ? fields : std::vector<TslBL::TuneField::Id>();
}

// What all lines of a sheet stand on, worked out once.
struct Sheet {
  explicit Sheet(const MethodRules& of)
      : rules(of), stored(of.operator TslBL::Method()), walked(WalkedFields(of)) {}

  const MethodRules& rules;
  TslBL::Method stored;  // with its loops as they follow from the rest
  std::vector<TslBL::TuneField::Id> walked;
};

std::string TuneText(const Sheet& sheet, const Tune& tune) {
  std::string text = OnOneLine(ToUtf8(tune.Info.Name));
  for (const TslBL::TuneField::Id id : sheet.walked)
    text += fmt::format(", {} {}", UserNameOf(tune, id), TslBL::FieldValue(tune, id).value());
  return text;
}

std::string RunLine(const Sheet& sheet, const std::string& place, std::uint32_t id) {
  const auto run = sheet.rules.TuneRuns.find(id);
  if (run == sheet.rules.TuneRuns.end())
    return fmt::format("  {:<9} run {}, which the method has not\n", place, id);
  const auto tune = sheet.rules.Tunes.find(run->second.TuneId);
  if (tune == sheet.rules.Tunes.end())
    return fmt::format("  {:<9} tune {}, which the method has not\n", place, run->second.TuneId);
  const Tune& t = tune->second;
  std::string line = fmt::format(
      "  {:<9} {:<4} {:<4} {:<14} {:>7} {:>12} {:>12}  {}\n", place, Shown(t.ControlData.Type),
      t.ControlData.PolarityType == TslCommon::PolarityPositive ? "+" : "-", RangeText(t),
      run->second.Records, EachText(t), Delay(run->second.SettleDelay * 1e-6), TuneText(sheet, t));
  if (const std::string action = ActionText(run->second.Info); !action.empty())
    line += fmt::format("  {:<9} {}\n", "", action);
  return line;
}

std::string LengthText(const Sheet& sheet, std::uint32_t tp) {
  const std::uint32_t timeout = sheet.rules.QTPTimeout(tp);
  const std::uint32_t loops = sheet.stored.TimePeriods[tp].Loops;
  const std::string length = timeout == MethodRules::FreeRun ? "without end" : ShownMilliseconds(timeout);
  return fmt::format("{}, {} {}", length, loops, loops == 1 ? "loop" : "loops");
}

std::string PeriodText(const Sheet& sheet, std::uint32_t tp) {
  const MethodRules& rules = sheet.rules;
  std::string text = fmt::format("{}  {}{}", PlaceName(tp), LengthText(sheet, tp),
                                 rules.QTPSave(tp) ? "" : ", its data are not kept");
  if (const std::uint32_t delay = rules.QTPSettleDelay(tp); delay > 0)
    text += fmt::format(", after {} for the polarity", ShownSeconds(delay * 1e-6));
  text += fmt::format("\n  {:<9} {:<4} {:<4} {:<14} {:>7} {:>12} {:>12}  {}\n", "item", "type", "ions", "m/z",
                      "spectra", "each", "switching", "tune");
  const auto& sequence = rules.TimePeriods[tp].Sequence;
  if (sequence.empty()) text += "  no items\n";
  for (std::size_t si = 0; si < sequence.size(); ++si) {
    if (sequence[si].empty()) text += fmt::format("  {:<9} no run\n", PlaceName(tp, si));
    for (std::size_t tr = 0; tr < sequence[si].size(); ++tr)
      text += RunLine(sheet, PlaceName(tp, si, tr), sequence[si][tr]);
  }
  return text + '\n';
}

std::string ValveText(TslBL::DiverterValveMethod program) {
  std::string text = "Valve\n";
  if (program.IsEmpty()) return text + "  no program\n\n";
  auto entry = program.QFirstState();
  do {
    text += fmt::format("  {:>10}  {}\n", fmt::format("{:.6g} s", entry.first.count / 1000.0),
                        ToUtf8(TslCommon::DiverterValve::ToStr(entry.second)));
  } while (program.QNextState(entry));
  return text + '\n';
}

std::string FiltersText(const char* name, const std::vector<TslBL::DDFilter>& filters) {
  if (filters.empty()) return "";
  std::string text = fmt::format("{}\n", name);
  for (const TslBL::DDFilter& filter : filters)
    text += fmt::format("  m/z {}-{}, time {}-{}\n", filter.MZStart, filter.MZEnd, filter.TimeStart,
                        filter.TimeEnd);
  return text + '\n';
}

std::string Timeline(const MethodRules& rules) {
  try {
    const std::string timeline = MethodTimeline(rules, TimesOf(rules));
    return timeline.empty() ? "" : "Program\n" + timeline + '\n';
  } catch (const std::runtime_error& e) {
    return fmt::format("Program\n  unknown: {}\n\n", e.what());
  }
}

std::string RulesText(const MethodRules& rules) {
  const std::vector<std::string> faults = MethodFaults(rules);
  if (faults.empty()) return "The rules accept it.\n";
  std::string text = "The rules do not accept it:\n";
  for (const std::string& fault : faults) text += "  " + fault + '\n';
  return text;
}

// Those of ramps have the line ends of another system.
std::string DescriptionOf(const MethodRules& rules) {
  std::wstring text = rules.Desc;
  std::erase(text, L'\r');
  while (text.ends_with(L'\n')) text.pop_back();
  return text.empty() ? "A method without a description" : ToUtf8(text);
}

std::string Head(const MethodRules& rules) {
  bool isFree = false;
  for (const TslBL::TimePeriod& period : rules.TimePeriods) isFree |= period.Timeout == MethodRules::FreeRun;
  return fmt::format("{}\n{}, {} in {}, {} for a change of polarity\n\n", DescriptionOf(rules),
                     isFree ? "without end" : ShownSeconds(rules.QDuration()),
                     rules.Tunes.size() == 1 ? "one tune" : fmt::format("{} tunes", rules.Tunes.size()),
                     rules.TuneRuns.size() == 1 ? "one run" : fmt::format("{} runs", rules.TuneRuns.size()),
                     ShownSeconds(rules.QPolSwitchTime()));
}

}  // namespace

std::string MethodSheet(const MethodRules& rules) {
  const Sheet sheet(rules);
  std::string text = Head(rules) + Timeline(rules);
  for (std::uint32_t tp = 0; tp < rules.QNumTimePeriods(); ++tp) text += PeriodText(sheet, tp);
  return text + ValveText(rules.QValveMethod()) + FiltersText("Inclusions", rules.QInclusionList()) +
         FiltersText("Exclusions", rules.QExclusionList()) + RulesText(rules);
}

}  // namespace TslTool
