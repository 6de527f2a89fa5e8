#pragma once
// Spectra as a creator leaves them, and measuring what may run on each only once.

#include <Spectra.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/detect/ThreadingParams.h>
#include <tslbl/spectrum/Spectrum.h>
#include <stdexcept>
#include <vector>

namespace Spectra {

inline TslBL::Spectrum CountsSpectrum(std::uint32_t points = kPointCount) {
  TslBL::Spectrum spectrum;
  spectrum.xAxis = Axis(points);
  spectrum.yAxis = Counts(points);
  spectrum.AddStatus(TslBL::Curve::STATUS_X);
  spectrum.AddStatus(TslBL::Curve::STATUS_Y);
  return spectrum;
}

// The tool's chain for spectra of this step.
inline std::vector<TslBL::CurveEval> UsualChain() {
  TslBL::SmoothParams smooth = TslBL::SmoothParams::DefaultMS();
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, 15}};
  TslBL::PeakDetectParams peaks = TslBL::PeakDetectParams::DefaultMS();
  peaks.SN = 5;
  peaks.MaxValley = 50.0;
  return {smooth, TslBL::BaselineParams::DefaultMS(), TslBL::NoiseParams::DefaultMS(), peaks};
}

inline void Run(TslBL::Spectrum& spectrum, const std::vector<TslBL::CurveEval>& chain) {
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(spectrum, chain, changed, error)) throw std::runtime_error("a step failed");
}

// Peak detection on the caller's thread for the length of a scope.
class OneThread {
 public:
  OneThread() {
    TslBL::AppThreadingParams one = before_;
    one.FindFeature.EnableMultiThreading = false;
    one.DescribePeaks.EnableMultiThreading = false;
    one.SelectPeaks.EnableMultiThreading = false;
    TslBL::SetMultiThreadingParams(one);
  }
  OneThread(const OneThread&) = delete;
  OneThread& operator=(const OneThread&) = delete;
  ~OneThread() { TslBL::SetMultiThreadingParams(before_); }

 private:
  TslBL::AppThreadingParams before_ = TslBL::GetMultiThreadingParams();
};

// As Measure, with `prepare` before each round, which does not count.
template <class Prepare, class Work>
void MeasureOnce(benchmark::State& state, std::uint32_t points, Prepare prepare, Work work) {
  const OneThread one;
  const double copy = CopyNanoseconds(points);
  std::vector<double> rounds;
  for (auto _ : state) {
    prepare();
    rounds.push_back(Nanoseconds(work));
  }
  state.counters["ns_per_point"] = Median(rounds) / points;
  state.counters["x_copy"] = Median(rounds) / copy;
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points));
}

}  // namespace Spectra
