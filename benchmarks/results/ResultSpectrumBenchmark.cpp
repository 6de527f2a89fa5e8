// What each spectrum costs in a document of results: its points, its peaks.
#include <Spectra.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/results/ResultSpectrum.h>
#include <tslbl/tune/Tune.h>

namespace {

using namespace TslBL;

void RawSpectrumElement(benchmark::State& state, bool profile, bool centroid) {
  Tune tune;
  tune.MZCalPts = {{L"Default Low", 5.0, 100.0}, {L"Default High", 3000.0, 60000.0}};
  tune.ControlData.MZLow = Spectra::kFirstMz;
  tune.ControlData.MZHi = 3000.0;
  tune.ControlData.MZStepSize = Spectra::kStepMz;
  RawSpectrum raw;
  raw.counts = Spectra::Counts();
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    XMLBuilder builder;
    AddRawSpectrum(builder, 1, tune, raw, profile, centroid);
    benchmark::DoNotOptimize(&builder);
  });
}

BENCHMARK_CAPTURE(RawSpectrumElement, Header, false, false);
BENCHMARK_CAPTURE(RawSpectrumElement, Profile, true, false);
BENCHMARK_CAPTURE(RawSpectrumElement, Centroid, false, true);

}  // namespace
