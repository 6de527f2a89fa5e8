#include <tool/commands/method/MethodDifferences.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/chain/ChainFile.h>
#include <tool/commands/method/MethodPlace.h>
#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/TuneDifferences.h>
#include <tool/frame/TimeText.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/method/MethodRules.h>
#include <algorithm>
#include <map>
#include <utility>

namespace TslTool {
namespace {

using TslBL::DDFilter;
using TslBL::Method;
using TslBL::Tune;
using TslBL::TuneRun;
using TslCommon::ToUtf8;

// The values of a method by their names, in order, and the tunes of its runs by their places.
struct Contents {
  std::vector<std::pair<std::string, std::string>> values;
  std::vector<std::pair<std::string, const Tune*>> tunes;

  void Add(const std::string& name, const std::string& value) { values.emplace_back(name, value); }
};

void AddFilters(const char* name, const std::vector<DDFilter>& filters, Contents& contents) {
  for (std::size_t i = 0; i < filters.size(); ++i)
    contents.Add(fmt::format("{} {}", name, i + 1),
                 fmt::format("{}-{}@{}-{}", filters[i].MZStart, filters[i].MZEnd, filters[i].TimeStart,
                             filters[i].TimeEnd));
}

void AddValve(TslBL::DiverterValveMethod program, Contents& contents) {
  if (program.IsEmpty()) return;
  auto entry = program.QFirstState();
  do {
    contents.Add(fmt::format("Valve@{}ms", entry.first.count),
                 ToUtf8(TslCommon::DiverterValve::ToStr(entry.second)));
  } while (program.QNextState(entry));
}

std::string ShownChain(const std::vector<TslBL::CurveEval>& chain) {
  std::vector<std::string> commands;
  commands.reserve(chain.size());
  for (const TslBL::CurveEval& eval : chain) commands.push_back(ToUtf8(eval.TypeText()));
  return commands.empty() ? "none" : fmt::format("{}", fmt::join(commands, " > "));
}

void AddRun(const Method& method, const std::string& place, std::uint32_t id, Contents& contents) {
  const auto found = method.TuneRuns.find(id);
  if (found == method.TuneRuns.end())
    return contents.Add(place, fmt::format("run {}, which there is not", id));
  const TuneRun& run = found->second;
  contents.Add(place, "a run");
  contents.Add(place + ".Records", fmt::format("{}", run.Records));
  contents.Add(place + ".SettleDelay", fmt::format("{} us", run.SettleDelay));
  contents.Add(place + ".Type", ToUtf8(TslBL::DDInfo::CvtType(run.Info.Type)));
  contents.Add(place + ".StartTrigger", ToUtf8(TslBL::DDInfo::CvtTrigger(run.Info.StartTrigger)));
  contents.Add(place + ".StartTriggerValue", fmt::format("{}", run.Info.StartTriggerValue));
  contents.Add(place + ".EndTrigger", ToUtf8(TslBL::DDInfo::CvtTrigger(run.Info.EndTrigger)));
  contents.Add(place + ".EndTriggerValue", fmt::format("{}", run.Info.EndTriggerValue));
  contents.Add(place + ".ExcludeDuration", fmt::format("{}", run.Info.ExclDuration));
  contents.Add(place + ".Evals", ShownChain(run.Info.CurveEvals));
  const auto tune = method.Tunes.find(run.TuneId);
  if (tune != method.Tunes.end()) return contents.tunes.emplace_back(place, &tune->second), void();
  contents.Add(place + ".Tune", fmt::format("tune {}, which there is not", run.TuneId));
}

void AddPeriod(const Method& method, std::size_t tp, Contents& contents) {
  const TslBL::TimePeriod& period = method.TimePeriods[tp];
  const std::string place = PlaceName(tp);
  const bool isFree = period.Timeout == TslBL::MethodRules::FreeRun;
  contents.Add(place, "a time period");
  contents.Add(place + ".Save", Shown(period.Save));
  contents.Add(place + ".Timeout", isFree ? "free" : ShownMilliseconds(period.Timeout));
  contents.Add(place + ".Loops", fmt::format("{}", period.Loops));
  contents.Add(place + ".SettleDelay", fmt::format("{} us", period.SettleDelay));
  for (std::size_t si = 0; si < period.Sequence.size(); ++si) {
    if (period.Sequence[si].empty()) contents.Add(PlaceName(tp, si), "an item without a run");
    for (std::size_t tr = 0; tr < period.Sequence[si].size(); ++tr)
      AddRun(method, PlaceName(tp, si, tr), period.Sequence[si][tr], contents);
  }
}

Contents ContentsOf(const Method& method) {
  Contents contents;
  contents.Add("Desc", OnOneLine(ToUtf8(method.Desc)));
  for (std::size_t tp = 0; tp < method.TimePeriods.size(); ++tp) AddPeriod(method, tp, contents);
  AddFilters("Inclusion", method.Inclusions, contents);
  AddFilters("Exclusion", method.Exclusions, contents);
  AddValve(method.ValveMethod, contents);
  return contents;
}

std::string Line(const std::string& name, const std::string& a, const std::string& b) {
  return fmt::format("{}: {} -> {}", name, a, b);
}

// The fields of a place that only one method has are told by the place alone.
bool IsWithin(const std::string& name, const std::vector<std::string>& places) {
  return std::ranges::any_of(places, [&](const std::string& place) {
    return name.size() > place.size() && name.starts_with(place) &&
           (name[place.size()] == '.' || name[place.size()] == '/');
  });
}

void AddLines(const Contents& a, const Contents& b, std::vector<std::string>& lines) {
  const std::map<std::string, std::string> inB(b.values.begin(), b.values.end());
  const std::map<std::string, std::string> inA(a.values.begin(), a.values.end());
  std::vector<std::string> places;
  for (const auto& [name, value] : a.values) {
    const auto twin = inB.find(name);
    if (twin != inB.end() && twin->second == value) continue;
    if (IsWithin(name, places)) continue;
    lines.push_back(Line(name, value, twin == inB.end() ? "-" : twin->second));
    if (twin == inB.end()) places.push_back(name);
  }
  for (const auto& [name, value] : b.values) {
    if (inA.contains(name) || IsWithin(name, places)) continue;
    lines.push_back(Line(name, "-", value));
    places.push_back(name);
  }
}

}  // namespace

std::vector<std::string> MethodDifferences(const Method& a, const Method& b) {
  const Contents inA = ContentsOf(a);
  const Contents inB = ContentsOf(b);
  std::vector<std::string> lines;
  AddLines(inA, inB, lines);
  const std::map<std::string, const Tune*> twins(inB.tunes.begin(), inB.tunes.end());
  for (const auto& [place, tune] : inA.tunes) {
    const auto twin = twins.find(place);
    if (twin == twins.end()) continue;
    for (const std::string& line : TuneDifferences(*tune, *twin->second))
      lines.push_back(fmt::format("{}.{}", place, line));
  }
  return lines;
}

}  // namespace TslTool
