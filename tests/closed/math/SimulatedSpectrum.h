#pragma once
// Spectra with a known background: Poisson counts on a grid of 0.05 Th, peaks of FWHM 0.6 Th at random places
// with heights spread evenly over the decades from 20 to 20 000 counts.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace tests {

enum class Background { Flat, Slope, Hump };

struct SpectrumRecipe {
  Background background;
  double level;  // counts per point of a flat background, above 0
  double peaksPerTh;
};

struct SimulatedSpectrum {
  std::vector<double> x;
  std::vector<double> background;
  std::vector<double> y;

  std::uint32_t Size() const { return static_cast<std::uint32_t>(y.size()); }
  double TrueNoise(std::size_t i) const { return std::sqrt(std::max(background[i], 0.05)); }
};

inline double BackgroundAt(double x, const SpectrumRecipe& recipe) {
  switch (recipe.background) {
    case Background::Slope:
      return 60 * std::exp(-(x - 100) / 400) + 4;
    case Background::Hump:
      return 8 + 60 * std::exp(-0.5 * std::pow((x - 600) / 120, 2));
    default:
      return recipe.level;
  }
}

inline void AddPeak(std::vector<double>& mean, double centre, double height, double sigma) {
  const auto reach = static_cast<std::ptrdiff_t>(12 * sigma);
  const auto middle = static_cast<std::ptrdiff_t>(centre);
  const auto size = static_cast<std::ptrdiff_t>(mean.size());
  for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(0, middle - reach); i < std::min(size, middle + reach);
       ++i) {
    const double u = (static_cast<double>(i) - centre) / sigma;
    mean[static_cast<std::size_t>(i)] += height * std::exp(-0.5 * u * u);
  }
}

// The same seed gives the same spectrum. From 100 Th upwards.
inline SimulatedSpectrum Simulate(const SpectrumRecipe& recipe, std::uint64_t seed,
                                  std::size_t points = 20000) {
  constexpr double kStep = 0.05;
  constexpr double kSigma = 0.6 / 2.3548200450309493 / kStep;
  std::mt19937_64 random(seed);
  SimulatedSpectrum spectrum;
  for (std::size_t i = 0; i < points; ++i) {
    spectrum.x.push_back(100 + kStep * static_cast<double>(i));
    spectrum.background.push_back(BackgroundAt(spectrum.x.back(), recipe));
  }
  std::vector<double> mean = spectrum.background;
  const double size = static_cast<double>(points);
  std::uniform_real_distribution<double> place(0, size);
  std::uniform_real_distribution<double> logHeight(std::log(20.0), std::log(20000.0));
  const auto peaks = static_cast<std::size_t>(size * kStep * recipe.peaksPerTh + 0.5);
  for (std::size_t k = 0; k < peaks; ++k) {
    const double centre = place(random);
    AddPeak(mean, centre, std::exp(logHeight(random)), kSigma);
  }
  for (double m : mean) {
    std::poisson_distribution<std::int64_t> counts(m);
    spectrum.y.push_back(static_cast<double>(counts(random)));
  }
  return spectrum;
}

}  // namespace tests
