#pragma once
// Groups of overlapped peaks whose truth is known: Poisson counts on a level of 5 counts and half a percent
// of the tallest peak.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

namespace tests {

constexpr double kFwhmPerSigma = 2.3548200450309493;

struct GroupRecipe {
  std::size_t peaks = 2;
  double spacing = 1.0;       // FWHM
  double signalToNoise = 50;  // root of the counts of the tallest apex
  double fwhm = 12;           // points
  double leastHeight = 0.3;   // of the tallest; the others lie evenly over the logarithm
  double widthChange = 0;     // every second peak is wider by this share, the others narrower
  double left = 1;            // half widths of peaks that tail, of the nominal one
  double right = 1;
  double margin = 1.7;  // FWHM from the outer peaks to the ends
};

struct SimulatedGroup {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> mean;
  std::vector<double> heights;
  std::vector<double> centres;  // centres of gravity
  std::vector<double> areas;
  std::vector<double> widths;  // standard deviations, nominal
  double level = 0;

  std::size_t Peaks() const { return heights.size(); }
};

using Random = std::mt19937_64;

inline double Between(Random& random, double from, double to) {
  return std::uniform_real_distribution<double>(from, to)(random);
}

inline std::vector<double> DrawHeights(const GroupRecipe& recipe, Random& random) {
  const double tallest = recipe.signalToNoise * recipe.signalToNoise;
  std::vector<double> heights(recipe.peaks);
  for (double& height : heights)
    height = tallest * std::exp(Between(random, 0, 1) * std::log(recipe.leastHeight));
  heights[random() % recipe.peaks] = tallest;
  return heights;
}

inline double ShapeAt(double distance, double left, double right) {
  const double u = distance / (distance < 0 ? left : right);
  return std::exp(-0.5 * u * u);
}

inline void CountIons(SimulatedGroup& group, Random& random) {
  for (const double mean : group.mean)
    group.y.push_back(static_cast<double>(std::poisson_distribution<std::int64_t>(mean)(random)));
}

// Spacings differ by up to 2.5 % from the recipe's.
inline SimulatedGroup SimulateGroup(const GroupRecipe& recipe, Random& random) {
  SimulatedGroup group;
  group.heights = DrawHeights(recipe, random);
  group.level = 5 + 0.005 * recipe.signalToNoise * recipe.signalToNoise;
  std::vector<double> tops;
  double top = recipe.margin * recipe.fwhm + Between(random, 0, 1);
  for (std::size_t k = 0; k < recipe.peaks; ++k) {
    tops.push_back(top);
    top += recipe.spacing * recipe.fwhm * (1 + Between(random, -0.025, 0.025));
    group.widths.push_back(recipe.fwhm / kFwhmPerSigma * (1 + recipe.widthChange * (k % 2 ? 1 : -1)));
  }
  const auto points = static_cast<std::size_t>(tops.back() + recipe.margin * recipe.fwhm) + 1;
  group.mean.assign(points, group.level);
  for (std::size_t i = 0; i < points; ++i) group.x.push_back(static_cast<double>(i));
  for (std::size_t k = 0; k < recipe.peaks; ++k) {
    const double left = group.widths[k] * recipe.left;
    const double right = group.widths[k] * recipe.right;
    for (std::size_t i = 0; i < points; ++i)
      group.mean[i] += group.heights[k] * ShapeAt(group.x[i] - tops[k], left, right);
    group.areas.push_back(group.heights[k] * (left + right) * std::sqrt(std::numbers::pi / 2));
    group.centres.push_back(tops[k] + std::sqrt(2 / std::numbers::pi) * (right - left));
  }
  CountIons(group, random);
  return group;
}

}  // namespace tests
