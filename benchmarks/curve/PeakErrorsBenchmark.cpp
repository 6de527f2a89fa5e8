// The standard errors of all peaks of a spectrum.
#include <curve/Curves.h>
#include <tslbl/curve/FilterWeights.h>
#include <tslbl/curve/PeakErrors.h>

namespace {

using namespace TslBL;

void StandardErrors(benchmark::State& state) {
  const Spectra::OneThread one;
  Spectrum spectrum = Spectra::CountsSpectrum();
  const std::vector<double> variance = spectrum.yAxis;
  Spectra::Run(spectrum, Spectra::UsualChain());
  const std::vector<double> filter = QFilterWeights(spectrum.smoothParams);
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    PeakErrorEstimator estimator(spectrum, variance, filter);
    for (std::uint32_t i = 0; i < spectrum.peaks.size(); ++i) benchmark::DoNotOptimize(estimator.Of(i));
  });
  state.counters["peaks"] = static_cast<double>(spectrum.peaks.size());
}

BENCHMARK(StandardErrors);

}  // namespace
