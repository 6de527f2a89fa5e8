#include <tslbl/method/MethodRules.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>

namespace TslBL {
namespace {

constexpr const wchar_t* kNewMethod = L"New Method";
constexpr std::uint32_t kMinute = 60000;  // milliseconds

template <class Value>
std::uint32_t LowestFreeId(const std::map<std::uint32_t, Value>& entries) {
  std::uint32_t id = Method::INVALID_ID + 1;
  for (const auto& [taken, value] : entries) {
    if (taken > id) break;
    ++id;
  }
  return id;
}

std::uint32_t MillisecondsOf(const Tune& tune, std::uint32_t numRecs) {
  if (numRecs == MethodRules::FreeRun) return MethodRules::FreeRun;
  return Truncate<std::uint32_t>(std::ceil(DevTuneRules::QDuration(tune) / 1000.0 * numRecs));
}

}  // namespace

MethodRules::MethodRules(double polSwitchTime)
    : Method(SingleTuneMethod(kNewMethod, DevTuneRules(Probes::ESI), 1)), PolSwitchTime(polSwitchTime) {
  WTPTimeout(0, kMinute);
  CleanupTunes();
}

MethodRules::MethodRules(double polSwitchTime, const Tune& tune, std::uint32_t numRecs)
    : Method(SingleTuneMethod(kNewMethod, tune, numRecs)), PolSwitchTime(polSwitchTime) {
  CleanupTunes();
}

MethodRules::MethodRules(double polSwitchTime, const Method& method)
    : Method(method), PolSwitchTime(polSwitchTime) {
  CleanupTunes();
}

MethodRules& MethodRules::operator=(const Method& method) {
  Method::operator=(method);
  Forget();
  CleanupTunes();
  return *this;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wclass-conversion"
MethodRules::operator Method() const {
#pragma GCC diagnostic pop
  Method method = *this;
  for (std::uint32_t tp = 0; tp < QNumTimePeriods(); ++tp) {
    TimePeriod& period = method.TimePeriods[tp];
    if (period.Timeout != FreeRun) period.Loops = CalculateNumLoops(tp, period.Timeout);
  }
  return method;
}

Method MethodRules::SingleTuneMethod(const std::wstring& description, const Tune& tune,
                                     std::uint32_t numRecs) {
  TimePeriod period;
  period.Loops = 1;
  period.Timeout = MillisecondsOf(tune, numRecs);
  period.Sequence.push_back({1});

  Method method;
  method.Desc = description;
  method.Tunes.emplace(1, tune);
  method.TuneRuns.emplace(1, TuneRun(1, numRecs));
  method.TimePeriods.push_back(std::move(period));
  method.ValveMethod.AddState(timebase::MSEC(0), DiverterValve(DiverterValve::kToSource));
  return method;
}

std::uint32_t MethodRules::GetTuneRunId(const Method& method) { return LowestFreeId(method.TuneRuns); }

bool MethodRules::GetTuneId(const Method& method, const Tune& tune, std::uint32_t& id) {
  const auto found =
      std::ranges::find_if(method.Tunes, [&](const auto& entry) { return entry.second == tune; });
  const bool isThere = found != method.Tunes.end();
  id = isThere ? found->first : LowestFreeId(method.Tunes);
  return isThere;
}

std::uint32_t MethodRules::AddTune(const Tune& tune) {
  const std::uint32_t id = LowestFreeId(Tunes);
  Tunes.emplace(id, tune);
  Modified = true;
  return id;
}

}  // namespace TslBL
