#include <tslbl/closed/math/overlap/WidthGuess.h>

#include <tslbl/closed/math/overlap/CurvatureScan.h>
#include <tslbl/closed/math/peak/GaussPeak.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace TslMath {
namespace {

constexpr double kLeastGuess = 1.0;
constexpr double kNextScale = 0.7;
constexpr BendLimits kSharp{8.0, 6.0, 0.1};
constexpr double kHighBend = 0.25;      // of the highest point
constexpr double kLeastOwnShare = 0.3;  // of the filter's width, squared: of less the noise is all

std::vector<double> MeansOfThree(std::span<const double> y) {
  std::vector<double> means(y.begin(), y.end());
  for (std::size_t i = 1; i + 1 < y.size(); ++i) means[i] = (y[i - 1] + y[i] + y[i + 1]) / 3.0;
  return means;
}

// How many points from the top on the curve is above the level, and whether that ends before the curve does.
struct Side {
  std::size_t points = 0;
  bool ends = false;
};

template <class Iterator>
Side SideFrom(Iterator top, Iterator end, double level) {
  const Iterator below = std::find_if(top, end, [level](double value) { return value <= level; });
  return {static_cast<std::size_t>(below - top), below != end};
}

// The narrowest peak that is seen through one filter, or `width`.
double NarrowestAt(std::span<const double> y, std::span<const double> variances, double scale, double width) {
  const auto [base, highest] = std::ranges::minmax(y);
  const CurvatureScan scan(y, variances, scale);
  for (const Bend& bend : scan.Bends(kSharp)) {
    const double squared = scan.SquaredWidth(bend, base);
    const double own = squared - scale * scale;
    const double height = bend.strength * squared / (scan.GaussianSum() * scale * scale);
    if (height < kHighBend * (highest - base) || own < kLeastOwnShare * scale * scale) continue;
    // What is uncertain counts as wider, or the smallest would be one that noise has made.
    width = std::min(width, std::sqrt(own) * (1.0 + 0.5 / bend.significance * squared / own));
  }
  return width;
}

}  // namespace

double WidthAtHalfHeight(std::span<const double> y) {
  const std::vector<double> means = MeansOfThree(y);
  const auto top = std::ranges::max_element(means);
  const double base = std::ranges::min(y);
  const double level = base + 0.5 * (*top - base);
  const Side right = SideFrom(top, means.end(), level);
  const Side left = SideFrom(std::make_reverse_iterator(top + 1), means.rend(), level);
  const std::size_t narrower = !left.ends    ? right.points
                               : !right.ends ? left.points
                                             : std::min(left.points, right.points);
  return std::max(kLeastGuess, GaussPeak::FWHM_to_A3(2.0 * static_cast<double>(narrower)));
}

double WidthOfBends(std::span<const double> y, std::span<const double> variances, double width) {
  double narrowest = width;
  for (double scale = std::max(kLeastGuess, width); scale >= kLeastGuess; scale *= kNextScale)
    narrowest = NarrowestAt(y, variances, scale, narrowest);
  return std::max(kLeastGuess, narrowest);
}

}  // namespace TslMath
