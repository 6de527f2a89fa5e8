#pragma once
// Methods in a notation, and what is in them as text.

#include <gtest/gtest.h>

#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <sstream>
#include <string>

namespace tests {

using namespace TslBL;

// The time of a change of polarity, in seconds and in microseconds.
inline constexpr double kSwitchTime = 0.5;
inline constexpr std::uint32_t kSwitch = 500000;

// "+100-200": a scan of positive ions from m/z 100 to 200. Its steps are of 0.1 m/z and 1 ms, its
// capillary exit stands at 160 volts.
inline Tune TuneOf(const std::string& text) {
  std::istringstream words(text);
  char sign = '+';
  char until = '-';
  Tune tune = DevTuneRules(Probes::ESI);
  tune.Info.LastSave = 0;
  words >> sign >> tune.ControlData.MZLow >> until >> tune.ControlData.MZHi;
  EXPECT_TRUE(words && until == '-') << text;
  tune.ControlData.PolarityType = sign == '-' ? PolarityNegative : PolarityPositive;
  return tune;
}

// "+100-200 -100-200 | +5-50": two time periods of a minute, the first with two items. Each item
// has a run and a tune of its own, whose ids count from 1.
inline Method MethodOf(const std::string& text) {
  Method method;
  method.TimePeriods.emplace_back();
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (word == "|") {
      method.TimePeriods.emplace_back();
      continue;
    }
    const auto id = static_cast<std::uint32_t>(method.Tunes.size()) + 1;
    method.Tunes.emplace(id, TuneOf(word));
    method.TuneRuns.emplace(id, TuneRun(id, 1));
    method.TimePeriods.back().Sequence.push_back({id});
  }
  for (TimePeriod& period : method.TimePeriods) {
    period.Loops = 1;
    period.Timeout = 60000;
  }
  return method;
}

// Whether it is the default tune of a probe. A new tune has the time at which it was made.
inline bool IsDefaultTune(Tune tune, Probes::ProbeTypes probe) {
  const DevTuneRules expected(probe);
  tune.Info.LastSave = expected.Info.LastSave;
  return tune == expected;
}

// Rules of such a method, without marks.
inline MethodRules RulesOf(const std::string& text) {
  MethodRules rules(kSwitchTime, MethodOf(text));
  rules.ClearModified();
  return rules;
}

// "1 2,3 | 4": the ids of the tune runs.
inline std::string SequencesOf(const Method& method) {
  std::string text;
  for (const TimePeriod& period : method.TimePeriods) {
    if (&period != &method.TimePeriods.front()) text += " | ";
    for (const auto& item : period.Sequence) {
      if (&item != &period.Sequence.front()) text += ' ';
      for (std::size_t i = 0; i < item.size(); ++i) text += (i > 0 ? "," : "") + std::to_string(item[i]);
    }
  }
  return text;
}

// The keys of a map.
template <class Map>
std::string KeysOf(const Map& map) {
  std::string text;
  for (const auto& [key, value] : map) text += (text.empty() ? "" : " ") + std::to_string(key);
  return text;
}

// One number for each tune run or tune, in the order of ids.
template <class Map, class Number>
std::string OfEach(const Map& map, Number number) {
  std::string text;
  for (const auto& [key, value] : map) text += (text.empty() ? "" : " ") + std::to_string(number(value));
  return text;
}
inline std::string InitSettleDelaysOf(const Method& method) {
  return OfEach(method.Tunes, [](const Tune& tune) { return tune.ControlData.InitSettleDelay; });
}
inline std::string RunDelaysOf(const Method& method) {
  return OfEach(method.TuneRuns, [](const TuneRun& run) { return run.SettleDelay; });
}
inline std::string TuneIdsOf(const Method& method) {
  return OfEach(method.TuneRuns, [](const TuneRun& run) { return run.TuneId; });
}
inline std::string PeriodDelaysOf(const Method& method) {
  std::string text;
  for (const TimePeriod& period : method.TimePeriods)
    text += (text.empty() ? "" : " ") + std::to_string(period.SettleDelay);
  return text;
}

}  // namespace tests
