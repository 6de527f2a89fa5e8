// Overlap peak deconvolution of a whole spectrum: 60 groups of two or three peaks that run into each other,
// fitted to the points as they were measured.
#include <curve/Curves.h>
#include <tslbl/overlap/OPD.h>

namespace {

using namespace TslBL;

constexpr std::uint32_t kGroups = 60;

// Counts with a group for every 48 m/z: peaks 0.6 m/z wide at half height and 0.7 apart.
Spectrum Overlapped() {
  std::vector<double> y(Spectra::kPointCount, 5.0);
  for (std::uint32_t group = 0; group < kGroups; ++group) {
    const double mz = 50.0 + 48.0 * group;
    Spectra::AddPeak(y, 2000, mz);
    Spectra::AddPeak(y, 1200, mz + 0.7);
    if (group % 2 == 1) Spectra::AddPeak(y, 1500, mz + 1.4);
  }
  std::mt19937_64 random(2);
  for (double& value : y) value = std::poisson_distribution<int>(value)(random);
  Spectrum spectrum = Spectra::CountsSpectrum();
  spectrum.yAxis = y;
  Spectra::Run(spectrum, Spectra::UsualChain());
  spectrum.yAxis = y;
  spectrum.status &= ~Curve::STATUS_SMOOTHED;
  spectrum.opdParams.ResolutionThreshold = 1'000'000;
  spectrum.opdParams.NumSmoothPts = 1;
  return spectrum;
}

void Deconvolve(benchmark::State& state, OPDParams::FittingFuncs method) {
  const Spectrum prepared = Overlapped();
  Spectrum spectrum = prepared;
  Changed changed;
  std::wstring error;
  Spectra::MeasureOnce(
      state, Spectra::kPointCount,
      [&] {
        spectrum = prepared;
        spectrum.opdParams.FittingFunc = method;
      },
      [&] { DoOPD(spectrum, changed, error); });
  state.counters["groups"] = spectrum.QNumGroups();
  state.counters["fitted"] = spectrum.QNumOverlappedPeaks();
}

void OPDMarquardtLevenberg(benchmark::State& state) { Deconvolve(state, OPDParams::MarquardtLevenberg); }
void OPDHookeJeeves(benchmark::State& state) { Deconvolve(state, OPDParams::HookeJeeves); }

// By the clock on the wall.
void OPDOnThreads(benchmark::State& state) {
  const Spectrum prepared = Overlapped();
  const AppThreadingParams before = GetMultiThreadingParams();
  AppThreadingParams params;
  params.Auto = false;
  params.ThreadPoolSize = static_cast<std::uint32_t>(state.range(0));
  SetMultiThreadingParams(params);
  Changed changed;
  std::wstring error;
  for (auto _ : state) {
    state.PauseTiming();
    Spectrum spectrum = prepared;
    state.ResumeTiming();
    DoOPD(spectrum, changed, error);
  }
  SetMultiThreadingParams(before);
}

BENCHMARK(OPDMarquardtLevenberg)->Unit(benchmark::kMillisecond);
BENCHMARK(OPDHookeJeeves)->Unit(benchmark::kMillisecond);
BENCHMARK(OPDOnThreads)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
