// All local maxima of a spectrum, raw (every third point is one) and smoothed.
#include <tslbl/closed/math/peak/Features.h>

#include <Spectra.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

namespace {

constexpr std::uint32_t n = Spectra::kPointCount;

void Measure(benchmark::State& state, const std::vector<double>& y) {
  std::vector<TslMath::CurvePt> found;
  Spectra::Measure(state, n, [&] {
    TslMath::FindFeatures(y.data(), n, 0, n, found);
    benchmark::DoNotOptimize(found.data());
  });
  state.counters["features"] = static_cast<double>(found.size());
}

void FindFeaturesRaw(benchmark::State& state) { Measure(state, Spectra::Counts()); }

void FindFeaturesSmoothed(benchmark::State& state) {
  const std::vector<double> y = Spectra::Counts();
  std::vector<double> smoothed(y.size());
  TslMath::SmoothGaussian(y.data(), n, 0, n, 7, smoothed.data());
  Measure(state, smoothed);
}

BENCHMARK(FindFeaturesRaw);
BENCHMARK(FindFeaturesSmoothed);

}  // namespace
