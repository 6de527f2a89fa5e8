// The three baselines with their usual parameters, and both results in one pass.
#include <tslbl/closed/math/Baseline.h>
#include <tslbl/closed/math/BaselineAndNoise.h>

#include <Spectra.h>

namespace {

constexpr std::uint32_t n = Spectra::PointCount;

template <class Run>
void Measure(benchmark::State& state, Run run) {
  const std::vector<double> y = Spectra::Counts();
  std::vector<double> out(n);
  for (auto _ : state) {
    run(y.data(), out.data());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  Spectra::ReportPoints(state);
}

void LinearFitSDBaseline(benchmark::State& state) {
  Measure(state, [](const double* y, double* out) { TslMath::LinearFitSDBaseline(y, n, 250, 5, 3, out); });
}

void LinearFitSDBaselineAndNoise(benchmark::State& state) {
  std::vector<double> noise(n);
  Measure(state, [&](const double* y, double* out) {
    TslMath::FitLinesSD(y, n, 250, 5, 3, {out, noise.data()});
  });
}

void APBMorph(benchmark::State& state) {
  Measure(state, [](const double* y, double* out) { TslMath::APBMorph(y, n, 250, 25, out); });
}

void VFBaseline(benchmark::State& state) {
  Measure(state, [](const double* y, double* out) { TslMath::VFBaseline(y, n, 250, out); });
}

BENCHMARK(Spectra::CopyPoints)->Name("Baseline/CopyPoints");
BENCHMARK(LinearFitSDBaseline);
BENCHMARK(LinearFitSDBaselineAndNoise);
BENCHMARK(APBMorph);
BENCHMARK(VFBaseline);

}  // namespace
