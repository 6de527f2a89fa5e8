#pragma once
// Spectra of proteins that are known: each charge a Gaussian line of counts on a background, as a quadrupole
// measures it.

#include <tool/commands/decon/ChargeStates.h>
#include <tool/io/PeakListSpectrum.h>
#include <tslbl/curve/Execute.h>
#include <cmath>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tests {

inline constexpr double kProton = 1.00727646688;

struct Protein {
  double mass;
  int lowCharge;
  int highCharge;
  double height;  // of the middle charge

  double Mz(int charge) const { return mass / charge + kProton; }
  double Height(int charge) const {
    const double middle = 0.5 * (lowCharge + highCharge);
    const double u = (charge - middle) / (0.25 * (highCharge - lowCharge));
    return height * std::exp(-0.5 * u * u);
  }
};
inline constexpr Protein kLarge = {16951.5, 12, 22, 8000.0};
inline constexpr Protein kSmall = {12359.6, 9, 16, 2000.0};

// m/z 650 to 1500, lines 0.7 m/z wide at half height.
inline TslTool::LoadedSpectrum CountedProteins(const std::vector<Protein>& proteins = {kLarge, kSmall}) {
  TslTool::LoadedSpectrum loaded;
  loaded.scan = 4;
  loaded.rtSeconds = 2.5;
  loaded.countAmpl = 1.0;
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  std::mt19937_64 random(11);
  for (int i = 0; i < 17000; ++i) {
    const double mz = 650.0 + 0.05 * i;
    double mean = 10.0;
    for (const Protein& protein : proteins) {
      for (int charge = protein.lowCharge; charge <= protein.highCharge; ++charge) {
        const double u = (mz - protein.Mz(charge)) / (0.7 / 2.3548200450309493);
        if (std::abs(u) < 8.0) mean += protein.Height(charge) * std::exp(-0.5 * u * u);
      }
    }
    loaded.spectrum->xAxis.push_back(mz);
    loaded.spectrum->yAxis.push_back(std::poisson_distribution<int>(mean)(random));
  }
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  return loaded;
}

// The same with its peaks, over a smoothed curve.
inline TslTool::LoadedSpectrum WithProteinPeaks(TslTool::LoadedSpectrum loaded = CountedProteins()) {
  using TslBL::CurveEval;
  TslBL::SmoothParams smooth = TslBL::SmoothParams::DefaultMS();
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, 13}};
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

// Isotopes of a peptide at one charge, as a list of peaks: an averagine of about 1500 Da.
struct Peptide {
  double monoMass;
  int charge;
  double height;

  double Mz(int isotope) const { return (monoMass + 1.00286 * isotope) / charge + kProton; }
};
inline constexpr Peptide kPeptide = {1500.75, 2, 1000.0};

inline TslTool::LoadedSpectrum PeptideList(const std::vector<Peptide>& peptides = {kPeptide}) {
  constexpr double kShares[] = {1.0, 0.82, 0.40, 0.14};
  TslTool::LoadedSpectrum loaded;
  loaded.scan = 4;
  loaded.rtSeconds = 2.5;
  std::vector<double> mz;
  std::vector<double> intensity;
  for (const Peptide& peptide : peptides) {
    for (int isotope = 0; isotope < 4; ++isotope) {
      mz.push_back(peptide.Mz(isotope));
      intensity.push_back(peptide.height * kShares[isotope]);
    }
  }
  loaded.spectrum = TslTool::PeakListSpectrum(mz, intensity);
  loaded.isPeakList = true;
  return loaded;
}

inline TslTool::DeconWishes DefaultWishes() { return TslTool::DeconOptions().Wishes({}, {}); }

inline TslTool::LoadedSpectrum WithSeries(TslTool::LoadedSpectrum loaded = WithProteinPeaks(),
                                          const TslTool::DeconWishes& wishes = DefaultWishes(),
                                          const std::vector<TslTool::SeriesEdit>& edits = {}) {
  TslTool::ScanEdits<TslTool::SeriesEdit> ofOne("proteins", {}, edits, "options");
  TslTool::ChargeStates("proteins", wishes, ofOne).Run(loaded);
  return loaded;
}

// As a text with two columns.
inline std::string TextOf(const TslTool::LoadedSpectrum& loaded) {
  std::ostringstream text;
  text.precision(10);
  for (std::size_t i = 0; i < loaded.spectrum->xAxis.size(); ++i)
    text << loaded.spectrum->xAxis[i] << '\t' << loaded.spectrum->yAxis[i] << '\n';
  return text.str();
}

}  // namespace tests
