// What each spectrum of a run costs for ten extracted ion chromatograms.
#include <curve/Curves.h>
#include <tslbl/chromatogram/ExtractedCurves.h>

namespace {

using namespace TslBL;

// Ranges 1 m/z wide all along the axis, as usual; or all of it ten times.
void ExtractedRanges(benchmark::State& state, double width) {
  const Spectrum spectrum = Spectra::CountsSpectrum();
  std::vector<MZRange> ranges;
  for (int k = 0; k < 10; ++k) ranges.push_back({MZRange::Partial, 5.0 + 200.0 * k, 5.0 + 200.0 * k + width});
  Spectra::Measure(state, Spectra::kPointCount, [&] {
    const std::vector<double> values = CalcSpectrumEICRanges(spectrum, ranges);
    benchmark::DoNotOptimize(values.data());
  });
}

void ExtractedPoints(benchmark::State& state) {
  const std::vector<double> values(10, 7.0);
  const std::vector<std::wstring> definitions = {L"A+B-C", L"D", L"E-F", L"1+G", L"HIJ-2"};
  std::vector<double> points;
  std::wstring error;
  for (auto _ : state) {
    CalcEICPoints(values, definitions, points, error);
    benchmark::DoNotOptimize(points.data());
  }
}

BENCHMARK_CAPTURE(ExtractedRanges, OneMzWide, 1.0);
BENCHMARK_CAPTURE(ExtractedRanges, WholeAxis, 3000.0);
BENCHMARK(ExtractedPoints);

}  // namespace
