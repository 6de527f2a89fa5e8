// From a spectrum to its peak table: smooth, find the baseline and the noise, detect the
// peaks, and print them in m/z.

#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/spectrum/PeakTable.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

using namespace TslBL;

namespace {

// Three singly charged ions, 0.6 m/z wide at half height, on a noisy background.
Spectrum MakeSpectrum() {
  const struct { double mz, counts; } ions[] = {{196.1, 8000.0}, {197.1, 900.0}, {524.3, 3000.0}};
  constexpr double kSigma = 0.6 / 2.3548;

  std::mt19937 random(1);
  std::normal_distribution<double> noise(200.0, 12.0);
  Spectrum spectrum;
  for (int i = 0; i < 10000; ++i) {
    const double mz = 100.0 + 0.05 * i;
    double counts = noise(random);
    for (const auto& ion : ions) {
      const double distance = (mz - ion.mz) / kSigma;
      counts += ion.counts * std::exp(-0.5 * distance * distance);
    }
    spectrum.xAxis.push_back(mz);
    spectrum.yAxis.push_back(counts);
  }
  spectrum.AddStatus(Curve::STATUS_X);
  spectrum.AddStatus(Curve::STATUS_Y);
  return spectrum;
}

}  // namespace

int main() {
  Spectrum spectrum = MakeSpectrum();

  PeakDetectParams detect = PeakDetectParams::DefaultMS();
  detect.SN = 10;
  const std::vector<CurveEval> chain = {CurveEval(SmoothParams::DefaultMS()),
                                        CurveEval(BaselineParams::DefaultMS()),
                                        CurveEval(NoiseParams::DefaultMS()), CurveEval(detect)};
  Changed changed;
  std::wstring error;
  if (!ExecuteCurveEvals(spectrum, chain, changed, error)) {
    std::fprintf(stderr, "%s\n", ToUtf8(error).c_str());
    return 1;
  }

  std::printf("%10s %10s %10s %8s %8s\n", "m/z", "amplitude", "area", "width", "S/N");
  for (const MZPeak& peak : CreateMZPeakTable(spectrum))
    std::printf("%10.3f %10.0f %10.0f %8.3f %8.0f\n", peak.Mass, peak.Ampl, peak.Area, peak.Width,
                peak.Signal2Noise);
}
