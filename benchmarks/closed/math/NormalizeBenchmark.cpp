#include <tslbl/closed/math/Normalize.h>

#include <Spectra.h>

namespace {

void Normalize(benchmark::State& state) {
  const std::vector<double> y = Spectra::Counts();
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    const std::vector<double> scaled = TslMath::Normalize(y);
    benchmark::DoNotOptimize(scaled.data());
  });
}

BENCHMARK(Normalize);

}  // namespace
