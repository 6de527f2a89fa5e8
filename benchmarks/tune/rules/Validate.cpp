// The rules of a tune: one pass over it, and a new one.
#include <benchmark/benchmark.h>

#include <tslbl/tune/rules/DevTuneRules.h>

namespace {

using namespace TslBL;

void ValidateTune(benchmark::State& state, const DevTuneRules& rules) {
  for (auto _ : state) {
    const DevTuneRules::ErrTypes result = rules.Validate();
    if (result != DevTuneRules::NoError) state.SkipWithError("the tune is invalid");
    benchmark::DoNotOptimize(result);
  }
}

void ValidateDefault(benchmark::State& state) {
  ValidateTune(state, DevTuneRules(static_cast<Probes::ProbeTypes>(state.range(0))));
}

// Every lens that can follow m/z does.
void ValidateCurves(benchmark::State& state) {
  DevTuneRules rules(Probes::ESI);
  Control& c = rules.ControlData;
  for (IOPoint* lens : {&c.CapExit, &c.Skimmer, &c.Q0RFAmpl, &c.Q0Offset, &c.Q0Exit1, &c.Q0Exit2,
                        &c.Q1Resolution, &c.Q1Offset, &c.Q1IonGuide})
    lens->Type = IOPoint::CalibratedType;
  ValidateTune(state, rules);
}

void ValidateSim(benchmark::State& state) {
  DevTuneRules rules(Probes::ESI);
  rules.WControlType(Control::Sim);
  rules.WSimWithSpan(Control::Span0_4);
  ValidateTune(state, rules);
}

void NewTune(benchmark::State& state) {
  for (auto _ : state) {
    const DevTuneRules rules(static_cast<Probes::ProbeTypes>(state.range(0)));
    benchmark::DoNotOptimize(&rules);
  }
}

BENCHMARK(ValidateDefault)->Arg(Probes::ESI)->Arg(Probes::APCI)->Unit(benchmark::kMicrosecond);
BENCHMARK(ValidateCurves)->Unit(benchmark::kMicrosecond);
BENCHMARK(ValidateSim)->Unit(benchmark::kMicrosecond);
BENCHMARK(NewTune)->Arg(Probes::ESI)->Arg(Probes::APCI)->Unit(benchmark::kMicrosecond);

}  // namespace
