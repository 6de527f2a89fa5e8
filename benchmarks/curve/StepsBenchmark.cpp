// Every step as a chain runs it, on the spectrum that the steps before it leave.
#include <curve/Curves.h>
#include <tslbl/curve/ThresholdParams.h>

namespace {

using namespace TslBL;

const std::vector<CurveEval> kBackground = {BaselineParams::DefaultMS(), NoiseParams::DefaultMS()};

void Step(benchmark::State& state, const std::vector<CurveEval>& before,
          const std::vector<CurveEval>& measured) {
  Spectrum prepared = Spectra::CountsSpectrum();
  Spectra::Run(prepared, before);
  Spectrum spectrum;
  Spectra::MeasureOnce(
      state, Spectra::kPointCount, [&] { spectrum = prepared; }, [&] { Spectra::Run(spectrum, measured); });
  state.counters["peaks"] = static_cast<double>(spectrum.peaks.size());
}

CurveEval Smooth(SmoothParams::Algs algorithm) {
  SmoothParams p = SmoothParams::DefaultMS();
  p.Alg = algorithm;
  p.Steps = {{0.0, 11}};
  return p;
}

CurveEval Baseline(BaselineParams::Algs algorithm) {
  BaselineParams p = BaselineParams::DefaultMS();
  p.Alg = algorithm;
  return p;
}

CurveEval Noise(NoiseParams::AutoAlgs algorithm) {
  NoiseParams p = NoiseParams::DefaultMS();
  p.AlgAuto = algorithm;
  return p;
}

// Smoothed, with baseline and noise; then detection with and without limits.
std::vector<CurveEval> BeforePeaks() {
  std::vector<CurveEval> chain = Spectra::UsualChain();
  chain.pop_back();
  return chain;
}

CurveEval Peaks(bool limits, PeakDetectParams::FindFeatureAlgorithms algorithm) {
  PeakDetectParams p = PeakDetectParams::DefaultMS();
  p.SNInUse = limits;
  p.SN = 5;
  p.MaxValley = 50.0;
  p.FindFeatureAlgorithm = algorithm;
  return p;
}

const bool registered = [] {
  using Auto = NoiseParams::AutoAlgs;
  const auto step = [](const char* name, const std::vector<CurveEval>& before,
                       const std::vector<CurveEval>& measured) {
    benchmark::RegisterBenchmark(
        name, [before, measured](benchmark::State& state) { Step(state, before, measured); });
  };
  step("Step/AerosolFilter", {}, {CurveEval::AerosolFilter()});
  step("Step/SmoothMean", {}, {Smooth(SmoothParams::Mean)});
  step("Step/SmoothMedian", {}, {Smooth(SmoothParams::Median)});
  step("Step/SmoothSavitzkyGolay", {}, {Smooth(SmoothParams::SavitzkyGolay)});
  step("Step/SmoothGaussian", {}, {Smooth(SmoothParams::Gaussian)});
  step("Step/BaselineLinear", {}, {Baseline(BaselineParams::LinearFitSD)});
  step("Step/BaselineValley", {}, {Baseline(BaselineParams::VFBaseline)});
  step("Step/BaselineAdaptive", {}, {Baseline(BaselineParams::Adaptive)});
  step("Step/NoiseLinear", {}, {Noise(Auto::LinearFitSD)});
  step("Step/NoiseValley", {}, {Noise(Auto::VFNoise)});
  step("Step/NoiseDispersion", {}, {Noise(Auto::Dispersion)});
  step("Step/NoiseMedian", {}, {Noise(Auto::Median)});
  step("Step/BaselineAndNoise", {}, kBackground);
  step("Step/BaselineSubtract", kBackground, {CurveEval::BaselineSubtract()});
  step("Step/ThresholdSubtract", {ThresholdParams()}, {CurveEval::ThresholdSubtract()});
  step("Step/PeaksSequential", BeforePeaks(), {Peaks(true, PeakDetectParams::Sequential)});
  step("Step/PeaksSequentialNoLimit", BeforePeaks(), {Peaks(false, PeakDetectParams::Sequential)});
  step("Step/PeaksSorted", BeforePeaks(), {Peaks(true, PeakDetectParams::Sorted)});
  return true;
}();

}  // namespace
