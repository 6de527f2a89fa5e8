// The rules of a method, of one as large as the instrument takes: 30 time periods of 50 items, each
// with a tune run and a tune of its own.
#include <benchmark/benchmark.h>

#include <tslbl/method/CheckPeakMethod.h>
#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/rules/DevTuneRules.h>

namespace {

using namespace TslBL;

constexpr std::uint32_t kTimePeriods = 30;
constexpr std::uint32_t kItems = 50;

// Scans of both polarities; `lens` is of the capillary exit.
Method LargeMethod(IOPoint::Types lens) {
  const MethodRules one(0.5);
  Method method = one;
  method.TimePeriods.assign(kTimePeriods, one.TimePeriods[0]);
  method.Tunes.clear();
  method.TuneRuns.clear();
  std::uint32_t id = 0;
  for (TimePeriod& period : method.TimePeriods) {
    period.Sequence.clear();
    for (std::uint32_t item = 0; item < kItems; ++item) {
      ++id;
      DevTuneRules tune(one.Tunes.at(1));
      tune.WMZRange(100 + item, 200 + id);
      tune.WPolarityType(item % 5 == 4 ? PolarityNegative : PolarityPositive);
      tune.ControlData.CapExit.Type = lens;
      method.Tunes.emplace(id, tune);
      method.TuneRuns.emplace(id, TuneRun(id, 1));
      period.Sequence.push_back({id});
    }
  }
  return method;
}

void ValidateMethod(benchmark::State& state) {
  const MethodRules rules(0.5, LargeMethod(static_cast<IOPoint::Types>(state.range(0))));
  for (auto _ : state)
    if (!rules.Validate()) state.SkipWithError("the method is invalid");
}

// An edit after which all delays are worked out anew, in a method where they do not change.
void MoveItem(benchmark::State& state) {
  MethodRules rules(0.5, LargeMethod(static_cast<IOPoint::Types>(state.range(0))));
  for (auto _ : state) rules.MoveSeqItem(0, 0, MethodRules::ToBeginning);
}

void WriteTune(benchmark::State& state) {
  MethodRules rules(0.5, LargeMethod(IOPoint::SingleType));
  for (auto _ : state) rules.WTRTune(kTimePeriods - 1, kItems / 2, 0, rules.QTRTune(0, 0, 0));
}

void InsertAndRemoveItem(benchmark::State& state) {
  MethodRules rules(0.5, LargeMethod(IOPoint::SingleType));
  for (auto _ : state) rules.RemoveSeqItem(15, rules.InsertSeqItem(15));
}

void SortMethod(benchmark::State& state) {
  MethodRules rules(0.5, LargeMethod(IOPoint::SingleType));
  for (auto _ : state) rules.Sort();
}

void TakeMethod(benchmark::State& state) {
  const Method method = LargeMethod(IOPoint::SingleType);
  for (auto _ : state) benchmark::DoNotOptimize(MethodRules(0.5, method));
}

void MakeCheckPeakMethod(benchmark::State& state) {
  std::set<double> mzs;
  for (int i = 0; i < state.range(0); ++i) mzs.insert(20 + 0.5 * i);
  const Tune tune = DevTuneRules(Probes::ESI);
  for (auto _ : state) benchmark::DoNotOptimize(CheckPeakMethod(mzs, tune));
}

// Lenses of a single value, and such that follow m/z.
constexpr std::int64_t kLenses[] = {IOPoint::SingleType, IOPoint::CalibratedType};

BENCHMARK(ValidateMethod)->Arg(kLenses[0])->Arg(kLenses[1])->Unit(benchmark::kMillisecond);
BENCHMARK(MoveItem)->Arg(kLenses[0])->Arg(kLenses[1])->Unit(benchmark::kMillisecond);
BENCHMARK(WriteTune)->Unit(benchmark::kMillisecond);
BENCHMARK(InsertAndRemoveItem)->Unit(benchmark::kMillisecond);
BENCHMARK(SortMethod)->Unit(benchmark::kMillisecond);
BENCHMARK(TakeMethod)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeCheckPeakMethod)->Arg(20)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
