// A protein from its counts to its mass: the chain, and charge state deconvolution behind it.
#include <curve/Curves.h>
#include <tslbl/chargestate/CSDecon.h>

namespace {

using namespace TslBL;

constexpr std::uint32_t kPoints = 24001;
constexpr double kMass = 16951.5;  // Da
constexpr double kProton = 1.00727646688;
constexpr double kIsotopes = 3.15;  // Da, standard deviation of the isotopes
constexpr double kToSigma = 2.3548200450309493;

// m/z 600 to 1800 of myoglobin at charges 10 to 20, lines 0.6 m/z wide and as the isotopes widen them.
DeconSpectrum Myoglobin() {
  DeconSpectrum spectrum;
  std::mt19937_64 random(16951);
  for (std::uint32_t i = 0; i < kPoints; ++i) {
    const double mz = 600.0 + 0.05 * i;
    double mean = 150.0 * std::exp((600.0 - mz) / 500.0) + 20.0;
    for (int charge = 10; charge <= 20; ++charge) {
      const double u =
          (mz - kMass / charge - kProton) * kToSigma / std::hypot(0.6, kToSigma * kIsotopes / charge);
      const double off = (charge - 15.0) / 2.5;
      if (std::abs(u) < 8.0) mean += 20000.0 * std::exp(-0.5 * (off * off + u * u));
    }
    spectrum.xAxis.push_back(mz);
    spectrum.yAxis.push_back(std::poisson_distribution<int>(mean)(random));
  }
  spectrum.AddStatus(Curve::STATUS_X);
  spectrum.AddStatus(Curve::STATUS_Y);
  return spectrum;
}

void ProteinToMass(benchmark::State& state) {
  const DeconSpectrum prepared = Myoglobin();
  DeconSpectrum spectrum;
  Spectra::MeasureOnce(
      state, kPoints, [&] { spectrum = prepared; },
      [&] {
        Changed changed;
        std::wstring error;
        Spectra::Run(spectrum, Spectra::UsualChain());
        spectrum.CSParams.Method = ChargeStateParams::UnresolvedOnly;
        DoCSDecon(spectrum, changed, error);
      });
  state.counters["mass"] = spectrum.Series.empty() ? 0.0 : spectrum.Series.front().AvgMass;
}

BENCHMARK(ProteinToMass)->Unit(benchmark::kMillisecond);

}  // namespace
