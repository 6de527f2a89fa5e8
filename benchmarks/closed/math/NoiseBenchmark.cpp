// The noises with their usual parameters.
#include <tslbl/closed/math/Noise.h>

#include <Spectra.h>

namespace {

constexpr std::uint32_t n = Spectra::PointCount;

template <class Run>
void Measure(benchmark::State& state, Run run) {
  std::vector<double> y = Spectra::Counts();
  std::vector<double> out(n);
  for (auto _ : state) {
    run(y.data(), out.data());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  Spectra::ReportPoints(state);
}

void LinearFitSDNoise(benchmark::State& state) {
  Measure(state, [](double* y, double* out) { TslMath::LinearFitSDNoise(y, n, 250, 5, 3, out); });
}

void VFNoise(benchmark::State& state) {
  Measure(state, [](double* y, double* out) { TslMath::VFNoise(y, n, 250, out); });
}

void APBNoiseDispersion(benchmark::State& state) {
  std::vector<double> x = Spectra::Axis();
  Measure(state, [&](double* y, double* out) { TslMath::APBNoise(x.data(), y, n, 250, 0, out); });
}

void APBNoiseMedian(benchmark::State& state) {
  std::vector<double> x = Spectra::Axis();
  Measure(state, [&](double* y, double* out) { TslMath::APBNoise(x.data(), y, n, 250, 5, out); });
}

void StandardDeviation(benchmark::State& state) {
  Measure(state, [](double* y, double* out) { *out = TslMath::StandardDeviation(y, n); });
}

BENCHMARK(Spectra::CopyPoints)->Name("Noise/CopyPoints");
BENCHMARK(LinearFitSDNoise);
BENCHMARK(VFNoise);
BENCHMARK(APBNoiseDispersion);
BENCHMARK(APBNoiseMedian);
BENCHMARK(StandardDeviation);

}  // namespace
