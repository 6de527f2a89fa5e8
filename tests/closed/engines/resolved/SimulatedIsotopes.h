#pragma once
// Peak lists of molecules whose isotopes are resolved: compositions scattered about the average one, counted
// ions, peaks of noise, and neighbours that merge.
#include <tslbl/closed/engines/IsotopePattern.h>
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

namespace tests {

constexpr double kProtonMass = 1.00727646688;

struct IsotopeRecipe {
  int species = 10;
  double fwhm = 0.6;  // m/z
  int maxCharge = 1;
  double noise = 0.03;  // peaks for each m/z
  double mzError = 0.03;
  double highestMass = 2500;  // Da
  double leastArea = 20;      // ions
  double mostArea = 3000;
};

struct SimulatedIon {
  double monoMass;
  int charge;
  int seen;  // isotopes of three ions and more
};

struct IsotopeSample {
  std::vector<TslMath::IonPeak> peaks;
  std::vector<SimulatedIon> ions;
};

inline int SampleCount() {
  const char* told = std::getenv("TSLBL_LISTS");
  return told != nullptr ? std::atoi(told) : 60;
}

class IsotopeSimulator {
 public:
  using Random = std::mt19937_64;
  static constexpr double kFrom = 200;
  static constexpr double kTo = 1500;

  IsotopeSimulator(const IsotopeRecipe& recipe, Random& random) : recipe_(recipe), random_(random) {}

  IsotopeSample Make() {
    while (sample_.ions.size() < static_cast<std::size_t>(recipe_.species)) TryIon();
    const auto noise = static_cast<int>(recipe_.noise * (kTo - kFrom));
    for (int k = 0; k < noise; ++k)
      Add(Uniform(kFrom, kTo), 3 * std::exp(std::exponential_distribution<double>(1 / 0.8)(random_)));
    Merge();
    return std::move(sample_);
  }

  // A molecule of about this mass at one charge, of so many ions.
  void AddIon(double mass, int charge, double area) {
    const TslMath::IsotopePattern pattern = TslMath::MakeIsotopePattern(Scattered(mass), {0, 1e-9});
    const int seen = AddPattern(pattern, charge, area);
    sample_.ions.push_back({pattern.monoMass, charge, seen});
  }

  // An average molecule at the five charges around m/z 900; gives its mass.
  double AddProtein(double about) {
    const TslMath::Composition unit = TslMath::ParseFormula("C117 H184 N32 O35 S1");
    const TslMath::IsotopePattern pattern =
        TslMath::MakeIsotopePattern(TslMath::ScaleToMass(unit, about), {0, 1e-9});
    const int middle = std::max(2, static_cast<int>(std::lround(about / 900)));
    for (int charge = std::max(1, middle - 2); charge <= middle + 2; ++charge) {
      const double off = charge - middle;
      AddPattern(pattern, charge,
                 600 * (1 + about / 3000) * std::exp(-0.5 * off * off / 1.5 + 0.3 * Normal()));
    }
    return pattern.monoMass;
  }

 private:
  int AddPattern(const TslMath::IsotopePattern& pattern, int charge, double area) {
    int seen = 0;
    for (std::size_t k = 0; k < pattern.probability.size(); ++k) {
      const double mean = area * pattern.probability[k];
      seen += mean >= 3;
      const double ions = mean * (1 + 0.03 * Normal()) + std::sqrt(mean + 1) * Normal();
      const double spread =
          std::hypot(recipe_.mzError, recipe_.fwhm / 2.355 / std::sqrt(std::max(ions, 0.0) + 1));
      if (ions > 0.5)
        Add((pattern.monoMass + pattern.mass[k]) / charge + kProtonMass + spread * Normal(), ions);
    }
    return seen;
  }

  double Uniform(double from, double to) { return std::uniform_real_distribution<double>(from, to)(random_); }
  double Normal() { return std::normal_distribution<double>(0, 1)(random_); }

  void Add(double mz, double ions) { sample_.peaks.push_back({mz, ions, ions, ions, mz / recipe_.fwhm}); }

  void TryIon() {
    const int charge = std::uniform_int_distribution<int>(1, recipe_.maxCharge)(random_);
    const double mass = charge * (Uniform(kFrom, kTo) - kProtonMass);
    if (mass > recipe_.highestMass) return;
    AddIon(mass, charge,
           recipe_.leastArea * std::exp(Uniform(0, std::log(recipe_.mostArea / recipe_.leastArea))));
  }

  // 6 % from the average molecule; sulfur, of which there are few, as chance has it.
  TslMath::Composition Scattered(double mass) {
    const TslMath::Composition unit = TslMath::ParseFormula("C117 H184 N32 O35 S1");
    TslMath::Composition scaled = TslMath::ScaleToMass(unit, mass);
    const double units = mass / TslMath::MonoMass(unit);
    for (std::size_t k = 0; k < scaled.counts.size(); ++k) {
      if (unit.counts[k] == 0) continue;
      const double mean = static_cast<double>(unit.counts[k]) * units;
      scaled.counts[k] = unit.counts[k] == 1 ? std::poisson_distribution<int>(mean)(random_)
                                             : std::max(1L, std::lround(mean * (1 + 0.06 * Normal())));
    }
    return scaled;
  }

  void Merge() {
    std::ranges::sort(sample_.peaks, {}, &TslMath::IonPeak::mz);
    std::vector<TslMath::IonPeak> merged;
    for (const TslMath::IonPeak& peak : sample_.peaks) {
      if (merged.empty() || peak.mz - merged.back().mz >= 0.6 * recipe_.fwhm) {
        merged.push_back(peak);
        continue;
      }
      TslMath::IonPeak& last = merged.back();
      const double sum = last.area + peak.area;
      last.mz = (last.mz * last.area + peak.mz * peak.area) / sum;
      last.area = last.intensity = last.signalToNoise = sum;
    }
    sample_.peaks = std::move(merged);
  }

  IsotopeRecipe recipe_;
  Random& random_;
  IsotopeSample sample_;
};

}  // namespace tests
