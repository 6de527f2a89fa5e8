// The finding of features alone, on a smoothed spectrum: all of them, and those only that are
// not certain to fail a signal-to-noise ratio of 5.
#include <curve/Curves.h>
#include <tslbl/detect/FindFeatures.h>
#include <tslbl/detect/RejectionBound.h>

namespace {

using namespace TslBL;

void Find(benchmark::State& state, bool leaveOut) {
  const auto points = static_cast<std::uint32_t>(state.range(0));
  Spectrum spectrum = Spectra::CountsSpectrum(points);
  std::vector<CurveEval> chain = Spectra::UsualChain();
  chain.pop_back();
  Spectra::Run(spectrum, chain);
  spectrum.peakDetectParams.SN = 5;
  const RejectionBound bound(spectrum);
  const CurveView view{spectrum.yAxis.data(), spectrum.baseline.data(), static_cast<std::ptrdiff_t>(points)};
  std::size_t features = 0;
  Spectra::Measure(state, points, [&] {
    FindFeatures finder(view, 50.0, leaveOut ? &bound : nullptr);
    finder.Sweep(0, view.n);
    features = finder.Settled().size();
  });
  state.counters["features"] = static_cast<double>(features);
}

void FindFeaturesSequential(benchmark::State& state) { Find(state, false); }
void FindFeaturesPromising(benchmark::State& state) { Find(state, true); }

BENCHMARK(FindFeaturesSequential)->Arg(Spectra::kPointCount)->RangeMultiplier(10)->Range(1'000, 10'000'000);
BENCHMARK(FindFeaturesPromising)->Arg(Spectra::kPointCount)->RangeMultiplier(10)->Range(1'000, 10'000'000);

}  // namespace
