// All local maxima of a spectrum, raw (every third point is one) and smoothed.
#include <tslbl/closed/math/Features.h>

#include <Spectra.h>
#include <tslbl/closed/math/Smoothing.h>

namespace {

void Measure(benchmark::State& state, const std::vector<double>& y) {
  std::vector<TslMath::CurvePt> found;
  for (auto _ : state) {
    TslMath::FindFeatures(y.data(), Spectra::PointCount, 0, Spectra::PointCount, found);
    benchmark::DoNotOptimize(found.data());
  }
  state.counters["features"] = static_cast<double>(found.size());
  Spectra::ReportPoints(state);
}

void FindFeaturesRaw(benchmark::State& state) { Measure(state, Spectra::Counts()); }

void FindFeaturesSmoothed(benchmark::State& state) {
  const std::vector<double> y = Spectra::Counts();
  std::vector<double> smoothed(y.size());
  TslMath::SmoothGaussian(y.data(), Spectra::PointCount, 0, Spectra::PointCount, 7, smoothed.data());
  Measure(state, smoothed);
}

BENCHMARK(Spectra::CopyPoints)->Name("Features/CopyPoints");
BENCHMARK(FindFeaturesRaw);
BENCHMARK(FindFeaturesSmoothed);

}  // namespace
