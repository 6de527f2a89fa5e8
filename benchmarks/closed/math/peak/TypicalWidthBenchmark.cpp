// How wide the peaks of a spectrum are: with peaks a few filters tell it, of noise alone it takes all of
// them; of weak ones all counts together.
#include <tslbl/closed/math/peak/PairCorrelation.h>
#include <tslbl/closed/math/peak/TypicalWidth.h>

#include <Spectra.h>

namespace {

void Measure(benchmark::State& state, const std::vector<double>& y) {
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    benchmark::DoNotOptimize(TslMath::TypicalPeakWidth(y.data(), Spectra::kPointCount));
  });
}

void TypicalWidth(benchmark::State& state) { Measure(state, Spectra::Counts()); }

void TypicalWidthOfNoise(benchmark::State& state) {
  std::mt19937_64 random(1);
  std::poisson_distribution<int> count(5.0);
  std::vector<double> y(Spectra::kPointCount);
  for (double& value : y) value = count(random);
  Measure(state, y);
}

void WidthOfWeakPeaks(benchmark::State& state) {
  const std::vector<double>& y = Spectra::Counts();
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    TslMath::PairCorrelation pairs;
    pairs.Add(y.data(), Spectra::kPointCount);
    benchmark::DoNotOptimize(pairs.Width());
  });
}

BENCHMARK(TypicalWidth);
BENCHMARK(TypicalWidthOfNoise);
BENCHMARK(WidthOfWeakPeaks);

}  // namespace
