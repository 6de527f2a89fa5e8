// The noises with the parameters of a new method.
#include <tslbl/closed/math/baseline/Noise.h>

#include <Spectra.h>

namespace {

constexpr std::uint32_t n = Spectra::kPointCount;

void LinearFitSDNoise(benchmark::State& state) {
  Spectra::MeasureOnCounts(state, n,
                           [](auto y, auto out) { TslMath::LinearFitSDNoise(y, n, 250, 5, 3, out); });
}

void VFNoise(benchmark::State& state) {
  Spectra::MeasureOnCounts(state, n, [](auto y, auto out) { TslMath::VFNoise(y, n, 250, out); });
}

// Dispersion (0), and the median of five segments.
void APBNoise(benchmark::State& state) {
  std::vector<double> x = Spectra::Axis();
  const auto median = static_cast<std::uint32_t>(state.range(0));
  Spectra::MeasureOnCounts(state, n,
                           [&](auto y, auto out) { TslMath::APBNoise(x.data(), y, n, 250, median, out); });
}

void StandardDeviation(benchmark::State& state) {
  Spectra::MeasureOnCounts(state, n, [](auto y, auto out) { *out = TslMath::StandardDeviation(y, n); });
}

BENCHMARK(LinearFitSDNoise);
BENCHMARK(VFNoise);
BENCHMARK(APBNoise)->Arg(0)->Arg(5);
BENCHMARK(StandardDeviation);

}  // namespace
