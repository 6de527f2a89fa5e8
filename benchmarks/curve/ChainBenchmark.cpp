// The whole chain, smoothing to peaks: on spectra of 1000 to 10 million points, and its detection on one and
// on two threads.
#include <curve/Curves.h>
#include <chrono>

namespace {

using namespace TslBL;

void Chain(benchmark::State& state) {
  const auto points = static_cast<std::uint32_t>(state.range(0));
  const Spectrum prepared = Spectra::CountsSpectrum(points);
  const std::vector<CurveEval> chain = Spectra::UsualChain();
  Spectrum spectrum;
  Spectra::MeasureOnce(
      state, points, [&] { spectrum = prepared; }, [&] { Spectra::Run(spectrum, chain); });
  state.counters["peaks"] = static_cast<double>(spectrum.peaks.size());
}

AppThreadingParams Threads(std::uint32_t count) {
  AppThreadingParams params;
  params.Auto = false;
  params.ThreadPoolSize = count;
  return params;
}

// By the clock on the wall, and what the calling thread works: what is left to it where the others take their
// share. On a machine with other work only the second tells how well the work is shared.
void DetectionOnThreads(benchmark::State& state) {
  Spectrum spectrum = Spectra::CountsSpectrum(10'000'000);
  std::vector<CurveEval> chain = Spectra::UsualChain();
  chain.pop_back();
  Spectra::Run(spectrum, chain);
  PeakDetectParams peaks = PeakDetectParams::DefaultMS();
  peaks.SNInUse = state.range(1) != 0;
  const AppThreadingParams before = GetMultiThreadingParams();
  SetMultiThreadingParams(Threads(static_cast<std::uint32_t>(state.range(0))));
  std::vector<double> seconds;
  std::vector<double> caller;
  for (auto _ : state) {
    const auto begin = std::chrono::steady_clock::now();
    caller.push_back(Spectra::Nanoseconds([&] { Spectra::Run(spectrum, {CurveEval(peaks)}); }));
    seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
  }
  SetMultiThreadingParams(before);
  state.counters["ms"] = 1e3 * Spectra::Median(seconds);
  state.counters["caller_ms"] = 1e-6 * Spectra::Median(caller);
}

BENCHMARK(Chain)->Arg(Spectra::kPointCount)->RangeMultiplier(10)->Range(1'000, 10'000'000);
BENCHMARK(DetectionOnThreads)
    ->ArgNames({"threads", "limits"})
    ->ArgsProduct({{1, 2}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
