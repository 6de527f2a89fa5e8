// Description of single peaks of a given number of samples: the spline alone, and with all four results.
#include <tslbl/closed/math/peak/SplinePeak.h>

#include <Spectra.h>

#include <numeric>

namespace {

struct PeakSamples {
  std::vector<double> x;
  std::vector<double> y;

  explicit PeakSamples(std::size_t n) : x(n), y(n) {
    std::iota(x.begin(), x.end(), 0.0);
    const double sigma = static_cast<double>(n) / 5;
    for (std::size_t i = 0; i < n; ++i) {
      const double u = (x[i] - 0.49 * static_cast<double>(n)) / sigma;
      y[i] = 1000 * std::exp(-0.5 * u * u);
    }
  }

  std::uint32_t Size() const { return static_cast<std::uint32_t>(x.size()); }
};

// A description does not work on a whole spectrum, but many are made for one: x_copy is the time of one over
// that of copying a spectrum.
template <class Describe>
void Measure(benchmark::State& state, Describe describe) {
  const PeakSamples samples(static_cast<std::size_t>(state.range(0)));
  Spectra::Measure(state, samples.Size(), [&] {
    const TslMath::SplinePeak peak(samples.x.data(), samples.y.data(), samples.Size());
    describe(peak);
  });
  const double nanoseconds = state.counters["ns_per_point"] * samples.Size();
  state.counters["ns_per_peak"] = nanoseconds;
  state.counters["x_copy"] = nanoseconds / Spectra::CopyNanoseconds(Spectra::kPointCount);
}

void SplinePeakMax(benchmark::State& state) {
  Measure(state, [](const TslMath::SplinePeak& peak) {
    double x = 0;
    double y = 0;
    peak.PeakMax(x, y);
    benchmark::DoNotOptimize(x);
  });
}

void SplinePeakAllResults(benchmark::State& state) {
  const std::vector<double> axis = Spectra::Axis();
  Measure(state, [&](const TslMath::SplinePeak& peak) {
    double x = 0, y = 0, left = 0, right = 0, start = 0, end = 0;
    peak.PeakMax(x, y);
    peak.HalfHeightPeakWidth(0, left, right);
    peak.PeakCentroid(0.4 * y, x, y, start, end);
    double area = peak.PeakArea(-1, 0, axis.data());
    benchmark::DoNotOptimize(left += right + x + start + end);
    benchmark::DoNotOptimize(area);
  });
}

BENCHMARK(SplinePeakMax)->Arg(5)->Arg(20)->Arg(60)->Arg(100);
BENCHMARK(SplinePeakAllResults)->Arg(5)->Arg(20)->Arg(60)->Arg(100);

}  // namespace
