#pragma once
// Peak lists of proteins whose charges are known: a Gaussian envelope over the charge, places that scatter,
// peaks of noise, and neighbours that merge.
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

namespace tests {

using TslMath::IonPeak;
using Random = std::mt19937_64;

constexpr double kProton = 1.00727646688;

struct SeriesRecipe {
  int proteins = 1;
  double lowest = 8000;  // Da
  double highest = 70000;
  double weakest = 1;     // of the strongest protein
  double noise = 0.1;     // peaks of noise for each m/z
  double mzError = 0.05;  // m/z
  double axisError = 0;   // of m/z, in common to all peaks of a list
  double missing = 0;     // share of charges
  bool dimer = false;     // the second protein has twice the mass of the first
  bool adducts = false;   // sodium and phosphate
  double from = 500;      // m/z
  double to = 2000;
};

struct SimulatedProtein {
  double mass;
  int peaks;  // those above the least intensity, before neighbours merge
};

struct SimulatedList {
  std::vector<IonPeak> peaks;
  std::vector<SimulatedProtein> proteins;
};

// How many lists a test of accuracy simulates; docs/numerics.md tells of more.
inline int ListCount() {
  const char* told = std::getenv("TSLBL_LISTS");
  return told != nullptr ? std::atoi(told) : 40;
}

class SeriesSimulator {
 public:
  SeriesSimulator(const SeriesRecipe& recipe, Random& random) : recipe_(recipe), random_(random) {}

  SimulatedList Make() {
    axis_ = 1 + recipe_.axisError * Normal();
    for (int k = 0; k < recipe_.proteins; ++k) AddProtein(k);
    AddNoise();
    Merge();
    return std::move(list_);
  }

 private:
  static constexpr double kStrongest = 1e5;
  static constexpr double kFaintest = 1000;
  static constexpr double kLeastDistance = 0.8;  // m/z
  static constexpr double kChargeSpread = 4;     // standard deviations

  double Uniform(double from, double to) { return std::uniform_real_distribution<double>(from, to)(random_); }
  double Normal() { return std::normal_distribution<double>(0, 1)(random_); }

  void Add(double mz, double intensity) {
    if (mz < recipe_.from || mz > recipe_.to || intensity < kFaintest) return;
    list_.peaks.push_back({mz * axis_ + recipe_.mzError * Normal(), intensity, intensity, 100, 0});
  }

  void AddProtein(int k) {
    const bool isDimer = recipe_.dimer && k == 1;
    const double mass =
        isDimer ? 2 * list_.proteins[0].mass
                : recipe_.lowest * std::exp(Uniform(0, std::log(recipe_.highest / recipe_.lowest)));
    const double strongest = kStrongest * std::exp(Uniform(std::log(recipe_.weakest), 0));
    const double middle = mass / (isDimer ? 1400 : Uniform(700, 1200));
    const double spread = middle * Uniform(0.12, 0.22);
    const std::size_t before = list_.peaks.size();
    for (int charge = std::max(1, static_cast<int>(middle - kChargeSpread * spread));
         charge <= middle + kChargeSpread * spread; ++charge) {
      const double off = (charge - middle) / spread;
      const double intensity = strongest * std::exp(-0.5 * off * off + 0.2 * Normal());
      if (Uniform(0, 1) < recipe_.missing) continue;
      Add(mass / charge + kProton, intensity);
      if (!recipe_.adducts) continue;
      Add((mass + 21.98) / charge + kProton, 0.15 * intensity * std::exp(0.3 * Normal()));
      Add((mass + 97.977) / charge + kProton, 0.08 * intensity * std::exp(0.3 * Normal()));
    }
    list_.proteins.push_back({mass, static_cast<int>(list_.peaks.size() - before)});
  }

  void AddNoise() {
    for (int k = 0; k < recipe_.noise * (recipe_.to - recipe_.from); ++k) {
      const double intensity = kFaintest * std::exp(std::exponential_distribution<double>(1 / 1.2)(random_));
      Add(Uniform(recipe_.from, recipe_.to), std::min(intensity, 0.3 * kStrongest * Uniform(0.5, 1)));
    }
  }

  void Merge() {
    std::ranges::sort(list_.peaks, {}, &IonPeak::mz);
    std::vector<IonPeak> merged;
    for (const IonPeak& peak : list_.peaks) {
      if (merged.empty() || peak.mz - merged.back().mz >= kLeastDistance) {
        merged.push_back(peak);
        continue;
      }
      IonPeak& last = merged.back();
      const double sum = last.area + peak.area;
      last.mz = (last.mz * last.area + peak.mz * peak.area) / sum;
      last.area = last.intensity = sum;
    }
    list_.peaks = std::move(merged);
  }

  SeriesRecipe recipe_;
  Random& random_;
  double axis_ = 1;
  SimulatedList list_;
};

}  // namespace tests
