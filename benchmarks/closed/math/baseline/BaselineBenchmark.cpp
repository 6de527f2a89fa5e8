// The three baselines with the parameters of a new method, and both results in one pass.
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>

#include <Spectra.h>

namespace {

constexpr std::uint32_t n = Spectra::kPointCount;

void LinearFitSDBaseline(benchmark::State& state) {
  Spectra::MeasureOnCounts(state, n,
                           [](auto y, auto out) { TslMath::LinearFitSDBaseline(y, n, 250, 5, 3, out); });
}

void LinearFitSDBaselineAndNoise(benchmark::State& state) {
  std::vector<double> noise(n);
  Spectra::MeasureOnCounts(state, n, [&](auto y, auto out) {
    TslMath::FitLinesSD(y, n, 250, 5, 3, {out, noise.data()});
  });
}

void APBMorph(benchmark::State& state) {
  Spectra::MeasureOnCounts(state, n, [](auto y, auto out) { TslMath::APBMorph(y, n, 250, 100, out); });
}

void VFBaseline(benchmark::State& state) {
  Spectra::MeasureOnCounts(state, n, [](auto y, auto out) { TslMath::VFBaseline(y, n, 250, out); });
}

BENCHMARK(LinearFitSDBaseline);
BENCHMARK(LinearFitSDBaselineAndNoise);
BENCHMARK(APBMorph);
BENCHMARK(VFBaseline);

}  // namespace
