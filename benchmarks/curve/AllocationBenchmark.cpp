// What the chain allocates for one more spectrum: the results themselves, and small change beside them.
#include <curve/Allocations.h>
#include <curve/Curves.h>

namespace {

using namespace TslBL;

// The results are the smoothed amplitudes, the baseline, the noise and the peaks.
void ChainAllocations(benchmark::State& state) {
  const Spectra::OneThread one;
  const Spectrum prepared = Spectra::CountsSpectrum();
  const std::vector<CurveEval> chain = Spectra::UsualChain();
  for (auto _ : state) {
    Spectrum spectrum = prepared;
    const auto before = Spectra::AllocatedSoFar();
    Spectra::Run(spectrum, chain);
    const auto after = Spectra::AllocatedSoFar();
    const std::size_t results =
        3 * spectrum.yAxis.size() * sizeof(double) + spectrum.peaks.size() * sizeof(PeakInfo);
    state.counters["blocks"] = static_cast<double>(after.blocks - before.blocks);
    state.counters["kB"] = static_cast<double>(after.bytes - before.bytes) / 1e3;
    state.counters["kB_results"] = static_cast<double>(results) / 1e3;
  }
}

BENCHMARK(ChainAllocations);

}  // namespace
