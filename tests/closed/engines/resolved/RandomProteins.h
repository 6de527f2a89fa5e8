#pragma once
// Peak lists of proteins of random residues, as an instrument that resolves their isotopes shows weak ones.
#include <tslbl/closed/engines/IsotopePattern.h>
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tests {

// Atoms of a residue, and how often it comes in proteins, percent.
struct Residue {
  int carbon, hydrogen, nitrogen, oxygen, sulfur;
  double often;
};

constexpr Residue kResidues[] = {
    {2, 3, 1, 1, 0, 7.07},  {3, 5, 1, 1, 0, 8.25},  {3, 5, 1, 2, 0, 6.56}, {5, 7, 1, 1, 0, 4.70},
    {5, 9, 1, 1, 0, 6.87},  {4, 7, 1, 2, 0, 5.34},  {3, 5, 1, 1, 1, 1.37}, {6, 11, 1, 1, 0, 9.66},
    {6, 11, 1, 1, 0, 5.96}, {4, 6, 2, 2, 0, 4.06},  {4, 5, 1, 3, 0, 5.45}, {5, 8, 2, 2, 0, 3.93},
    {6, 12, 2, 1, 0, 5.84}, {5, 7, 1, 3, 0, 6.75},  {5, 9, 1, 1, 1, 2.42}, {6, 7, 3, 1, 0, 2.27},
    {9, 9, 1, 1, 0, 3.86},  {6, 12, 4, 1, 0, 5.53}, {9, 9, 1, 2, 0, 2.92}, {11, 10, 2, 1, 0, 1.08},
};

// Of about this mass.
inline TslMath::Composition RandomProtein(double mass, std::mt19937_64& random) {
  constexpr double kMeanResidue = 111;  // Da
  std::vector<double> often;
  for (const Residue& residue : kResidues) often.push_back(residue.often);
  std::discrete_distribution<std::size_t> draw(often.begin(), often.end());
  Residue sum{0, 2, 0, 1, 0, 0};
  for (int k = static_cast<int>(mass / kMeanResidue); k > 0; --k) {
    const Residue& next = kResidues[draw(random)];
    sum.carbon += next.carbon;
    sum.hydrogen += next.hydrogen;
    sum.nitrogen += next.nitrogen;
    sum.oxygen += next.oxygen;
    sum.sulfur += next.sulfur;
  }
  std::string formula;
  for (const auto& [symbol, count] :
       {std::pair{"C", sum.carbon}, std::pair{"H", sum.hydrogen}, std::pair{"N", sum.nitrogen},
        std::pair{"O", sum.oxygen}, std::pair{"S", sum.sulfur}})
    if (count > 0) formula += symbol + std::to_string(count);
  return TslMath::ParseFormula(formula);
}

// Intensities are in units of the noise, and peaks below three of these are not seen.
class WeakSpectrum {
 public:
  static constexpr double kProton = 1.00727646688;
  static constexpr double kFwhm = 0.009;  // m/z
  static constexpr double kLeastSeen = 3;

  explicit WeakSpectrum(std::mt19937_64& random) : random_(random) {}

  void AddState(const TslMath::IsotopePattern& pattern, int charge, double top) {
    const double scale = top / pattern.probability[pattern.Top()];
    for (std::size_t k = 0; k < pattern.probability.size(); ++k) {
      const double mean = scale * pattern.probability[k];
      if (mean < 0.01) continue;
      const double intensity = mean + normal_(random_);
      if (intensity < kLeastSeen) continue;
      Add((pattern.monoMass + pattern.mass[k]) / charge + kProton +
              kFwhm / 2.355 / intensity * normal_(random_),
          intensity);
    }
  }
  void AddNoise(double from, double to, double peaksPerMz) {
    for (int k = static_cast<int>((to - from) * peaksPerMz); k > 0; --k)
      Add(std::uniform_real_distribution<double>(from, to)(random_),
          kLeastSeen + std::exponential_distribution<double>(2)(random_));
  }

  // Neighbours that run into one another are one.
  std::vector<TslMath::IonPeak> Peaks() {
    std::ranges::sort(peaks_, {}, &TslMath::IonPeak::mz);
    std::vector<TslMath::IonPeak> merged;
    for (const TslMath::IonPeak& peak : peaks_) {
      if (merged.empty() || peak.mz - merged.back().mz >= 0.8 * kFwhm) {
        merged.push_back(peak);
        continue;
      }
      TslMath::IonPeak& last = merged.back();
      const double sum = last.intensity + peak.intensity;
      last.mz = (last.mz * last.intensity + peak.mz * peak.intensity) / sum;
      last.intensity = last.area = last.signalToNoise = sum;
    }
    return merged;
  }

 private:
  void Add(double mz, double intensity) {
    peaks_.push_back({mz, intensity, intensity, intensity, mz / kFwhm});
  }

  std::mt19937_64& random_;
  std::normal_distribution<double> normal_{0, 1};
  std::vector<TslMath::IonPeak> peaks_;
};

}  // namespace tests
