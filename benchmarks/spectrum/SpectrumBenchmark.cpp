// What stands before and behind the chain: a spectrum of raw counts, and its table of peaks in m/z.
#include <curve/Curves.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/spectrum/PeakTable.h>
#include <tslbl/tune/Tune.h>
#include <memory>

namespace {

using namespace TslBL;

void CreateSpectrumFromCounts(benchmark::State& state) {
  Tune tune;
  tune.MZCalPts = {{L"Default Low", 5.0, 100.0}, {L"Default High", 3000.0, 60000.0}};
  tune.ControlData.MZLow = Spectra::kFirstMz;
  tune.ControlData.MZHi = 3000.0;
  tune.ControlData.MZStepSize = Spectra::kStepMz;
  RawSpectrum raw;
  raw.counts = Spectra::Counts();
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    const std::unique_ptr<Spectrum> spectrum(CreateSpectrum(tune, raw, nullptr));
    benchmark::DoNotOptimize(spectrum->xAxis.data());
  });
}

void PeakTable(benchmark::State& state) {
  Spectrum spectrum = Spectra::CountsSpectrum();
  Spectra::Run(spectrum, Spectra::UsualChain());
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    const std::vector<MZPeak> table = CreateMZPeakTable(spectrum);
    benchmark::DoNotOptimize(table.data());
  });
  state.counters["peaks"] = static_cast<double>(spectrum.peaks.size());
}

BENCHMARK(CreateSpectrumFromCounts);
BENCHMARK(PeakTable);

}  // namespace
