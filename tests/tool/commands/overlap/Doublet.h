#pragma once
// A spectrum whose overlapping peaks are known: a doublet at m/z 503 and 503.75, which is detected as one
// peak, and a single peak at 507, all Gaussian and 0.6 m/z wide at half height, counted.

#include <tool/commands/overlap/Deconvolution.h>
#include <tslbl/curve/Execute.h>
#include <cmath>
#include <cstdint>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tests {

struct KnownPeak {
  double mz;
  double height;

  static constexpr double kSigma = 0.6 / 2.3548200450309493;
  double Area() const { return height * kSigma * 2.5066282746310002; }
};
inline constexpr KnownPeak kLeft = {503.0, 4000.0};
inline constexpr KnownPeak kRight = {503.75, 2500.0};
inline constexpr KnownPeak kAlone = {507.0, 3000.0};

// Some more, for spectra with another group.
inline TslTool::LoadedSpectrum CountedSpectrum(std::vector<KnownPeak> peaks = {kLeft, kRight, kAlone}) {
  TslTool::LoadedSpectrum loaded;
  loaded.scan = 3;
  loaded.rtSeconds = 12.5;
  loaded.countAmpl = 1.0;
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  std::mt19937_64 random(7);
  for (int i = 0; i < 300; ++i) {
    const double mz = 497.0 + 0.05 * i;
    double y = 20.0;
    for (const KnownPeak& peak : peaks) {
      const double u = (mz - peak.mz) / KnownPeak::kSigma;
      y += peak.height * std::exp(-0.5 * u * u);
    }
    loaded.spectrum->xAxis.push_back(mz);
    loaded.spectrum->yAxis.push_back(std::poisson_distribution<int>(y)(random));
  }
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  return loaded;
}

// The same with its peaks, over a smoothed curve.
inline TslTool::LoadedSpectrum WithPeaks(TslTool::LoadedSpectrum loaded = CountedSpectrum()) {
  using TslBL::CurveEval;
  TslBL::SmoothParams smooth = TslBL::SmoothParams::DefaultMS();
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, 9}};
  TslBL::PeakDetectParams peaks = TslBL::PeakDetectParams::DefaultMS();
  peaks.SN = 8;
  loaded.measured = loaded.spectrum->yAxis;
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(*loaded.spectrum,
                                {CurveEval(smooth), CurveEval(TslBL::BaselineParams()),
                                 CurveEval(TslBL::NoiseParams()), CurveEval(peaks)},
                                changed, error))
    throw std::runtime_error("the spectrum cannot be evaluated");
  return loaded;
}

// And deconvolved.
inline TslTool::LoadedSpectrum Deconvolved(TslTool::LoadedSpectrum loaded = WithPeaks(),
                                           const std::vector<TslTool::GroupEdit>& edits = {}) {
  TslTool::Deconvolution("doublet", TslTool::OverlapOptions(), {}, edits).Run(loaded);
  return loaded;
}

// As a text with two columns.
inline std::string TextOf(const TslTool::LoadedSpectrum& loaded) {
  std::ostringstream text;
  for (std::size_t i = 0; i < loaded.spectrum->xAxis.size(); ++i)
    text << loaded.spectrum->xAxis[i] << '\t' << loaded.spectrum->yAxis[i] << '\n';
  return text.str();
}

}  // namespace tests
