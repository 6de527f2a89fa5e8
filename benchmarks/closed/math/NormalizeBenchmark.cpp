#include <tslbl/closed/math/Normalize.h>

#include <Spectra.h>

namespace {

void Normalize(benchmark::State& state) {
  const std::vector<double> y = Spectra::Counts();
  for (auto _ : state) {
    const std::vector<double> scaled = TslMath::Normalize(y);
    benchmark::DoNotOptimize(scaled.data());
  }
  Spectra::ReportPoints(state);
}

BENCHMARK(Spectra::CopyPoints)->Name("Normalize/CopyPoints");
BENCHMARK(Normalize);

}  // namespace
