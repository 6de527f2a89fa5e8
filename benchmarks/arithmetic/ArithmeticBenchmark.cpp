// Sums and averages of spectra, and the base peak of each for a curve over a run.
#include <curve/Curves.h>
#include <tslbl/arithmetic/BasePeak.h>
#include <tslbl/arithmetic/SpectrumSums.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <memory>

namespace {

using namespace TslBL;

constexpr std::uint32_t kSpectra = 100;

// 100 spectra of 59 901 points on two grids, half a step apart.
std::vector<Spectrum> Spectra100() {
  std::vector<Spectrum> spectra(kSpectra, Spectra::CountsSpectrum());
  for (std::uint32_t k = 0; k < kSpectra; ++k) {
    spectra[k].tuneMZCalPts = spectra[k].appliedMZCalPts = {{L"low", 5.0, 100.0}, {L"high", 3000.0, 60000.0}};
    spectra[k].startMDAC = k % 2 == 0 ? 100.0 : 100.5;
    spectra[k].stepMDAC = 1.0;
    MZAssign(spectra[k]);
  }
  return spectra;
}

void CompositeAverage(benchmark::State& state) {
  std::vector<Spectrum> spectra = Spectra100();
  std::vector<StateSpectrum> sources;
  for (Spectrum& spectrum : spectra) sources.push_back({1, &spectrum});
  Spectra::Measure(state, kSpectra * Spectra::kPointCount, [&] {
    const std::unique_ptr<Spectrum> average(AverageMultiStateSpectra(sources));
    benchmark::DoNotOptimize(average->yAxis.data());
  });
}

void SingleStateSum(benchmark::State& state) {
  Spectrum sum = Spectra::CountsSpectrum();
  const Spectrum other = sum;
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    AddSingleStateSpectra(&sum, &other);
    benchmark::DoNotOptimize(sum.yAxis.data());
  });
}

// The base peak of 20 m/z in the middle, in spectra of so many points.
void BasePeak(benchmark::State& state) {
  const auto points = static_cast<std::uint32_t>(state.range(0));
  Spectrum spectrum;
  spectrum.xAxis = Spectra::Axis(points);
  spectrum.yAxis = Spectra::Counts(points);
  spectrum.AddStatus(Curve::STATUS_X);
  spectrum.AddStatus(Curve::STATUS_Y);
  const double middle = spectrum.xAxis[points / 2];
  const MZRange range(MZRange::Partial, middle - 10.0, middle + 10.0);
  const std::vector<CurveEval> chain = Spectra::UsualChain();
  MZPeak peak;
  bool failed = false;
  std::wstring error;
  for (auto _ : state) {
    if (!CalcBasePeak(spectrum, range, chain, peak, failed, error)) state.SkipWithError("no base peak");
    benchmark::DoNotOptimize(peak.Mass);
  }
}

BENCHMARK(CompositeAverage);
BENCHMARK(SingleStateSum);
BENCHMARK(BasePeak)->Arg(2000)->Arg(59901)->Arg(5000000);

}  // namespace
