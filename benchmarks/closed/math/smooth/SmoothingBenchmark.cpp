// The four filters over a whole spectrum, by width.
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <Spectra.h>

namespace {

constexpr std::uint32_t N = Spectra::kPointCount;

template <typename Filter>
void Measure(benchmark::State& state, Filter filter) {
  const auto width = static_cast<std::uint32_t>(state.range(0));
  Spectra::MeasureOnCounts(state, N, [&](auto y, auto out) { filter(y, width, out); });
}

void SmoothMean(benchmark::State& state) {
  Measure(state, [](auto y, auto width, auto out) { TslMath::SmoothMean(y, N, 0, N, width, out); });
}

void SmoothMedian(benchmark::State& state) {
  Measure(state, [](auto y, auto width, auto out) { TslMath::SmoothMedian(y, N, 0, N, width, out); });
}

void SmoothGaussian(benchmark::State& state) {
  Measure(state, [](auto y, auto width, auto out) { TslMath::SmoothGaussian(y, N, 0, N, width, out); });
}

void SmoothSavitzkyGolay(benchmark::State& state) {
  Measure(state,
          [](auto y, auto width, auto out) { TslMath::SmoothSavitzkyGolay(y, N, 0, N, width, 2, out); });
}

// Stretches of 20 points with widths that grow along the curve: what a gradual width table asks for.
void SmoothGaussianInShortStretches(benchmark::State& state) {
  Spectra::MeasureOnCounts(state, N, [](auto y, auto out) {
    for (std::uint32_t start = 0; start < N; start += 20) {
      TslMath::SmoothGaussian(y, N, start, std::min(N, start + 20), 5 + start / 5000, out);
    }
  });
}

BENCHMARK(SmoothMean)->Arg(5)->Arg(11)->Arg(12)->Arg(101)->Arg(1001);
BENCHMARK(SmoothMedian)->Arg(5)->Arg(7)->Arg(9)->Arg(11)->Arg(13)->Arg(15)->Arg(17)->Arg(25)->Arg(27);
BENCHMARK(SmoothMedian)->Arg(31)->Arg(101)->Arg(151)->Arg(153)->Arg(1001);
BENCHMARK(SmoothGaussian)->Arg(3)->Arg(5)->Arg(7)->Arg(11)->Arg(15)->Arg(100)->Arg(1000);
BENCHMARK(SmoothSavitzkyGolay)->Arg(5)->Arg(7)->Arg(11)->Arg(25)->Arg(101);
BENCHMARK(SmoothGaussianInShortStretches);

}  // namespace
