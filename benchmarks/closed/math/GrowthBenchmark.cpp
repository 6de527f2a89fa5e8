// Each filter, baseline and noise on 1000 to 10 million points: the time a point must not grow with them.
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <Spectra.h>

namespace {

using std::uint32_t;

template <class Run>
void Register(const char* name, Run run) {
  benchmark::RegisterBenchmark(name,
                               [run](benchmark::State& state) {
                                 const auto n = static_cast<uint32_t>(state.range(0));
                                 Spectra::MeasureOnCounts(state, n,
                                                          [&](auto y, auto out) { run(y, n, out); });
                               })
      ->RangeMultiplier(10)
      ->Range(1'000, 10'000'000);
}

const bool registered = [] {
  using namespace TslMath;
  Register("Growth/SmoothMean11", [](auto y, uint32_t n, auto out) { SmoothMean(y, n, 0, n, 11, out); });
  Register("Growth/SmoothMedian11", [](auto y, uint32_t n, auto out) { SmoothMedian(y, n, 0, n, 11, out); });
  Register("Growth/SmoothGaussian11",
           [](auto y, uint32_t n, auto out) { SmoothGaussian(y, n, 0, n, 11, out); });
  Register("Growth/SmoothSavitzkyGolay11",
           [](auto y, uint32_t n, auto out) { SmoothSavitzkyGolay(y, n, 0, n, 11, 2, out); });
  Register("Growth/LinearFitSDBaseline",
           [](auto y, uint32_t n, auto out) { LinearFitSDBaseline(y, n, 250, 5, 3, out); });
  Register("Growth/APBMorph", [](auto y, uint32_t n, auto out) { APBMorph(y, n, 250, 100, out); });
  Register("Growth/VFBaseline", [](auto y, uint32_t n, auto out) { VFBaseline(y, n, 250, out); });
  Register("Growth/LinearFitSDNoise",
           [](auto y, uint32_t n, auto out) { LinearFitSDNoise(y, n, 250, 5, 3, out); });
  Register("Growth/VFNoise", [](auto y, uint32_t n, auto out) { VFNoise(y, n, 250, out); });
  Register("Growth/APBNoise", [](auto y, uint32_t n, auto out) { APBNoise(nullptr, y, n, 250, 0, out); });
  return true;
}();

}  // namespace
