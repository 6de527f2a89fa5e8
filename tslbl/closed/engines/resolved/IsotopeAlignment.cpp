#include <tslbl/closed/engines/resolved/IsotopeAlignment.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace TslMath {
namespace {

constexpr std::int32_t kMostShift = 2;
constexpr std::size_t kLeastSeen = 3;
constexpr double kCompositionScatter = 0.0015;
constexpr double kKinScatter = 0.03;  // isotopes; a modification changes what a protein is made of by little
constexpr double kIsOfKin = 0.7;      // chance that two proteins of nearly one mass are forms of one
constexpr double kMostError = 1.0;    // isotopes; a pattern is laid about its top from the start

// Less what all have in common.
double LogDensity(double off, double deviation) {
  const double relative = off / deviation;
  return -0.5 * relative * relative - std::log(deviation);
}

double LogOfSum(double a, double b) { return std::max(a, b) + std::log1p(std::exp(-std::abs(a - b))); }

std::size_t CountSeen(std::span<const SeenState> states) {
  std::size_t count = 0;
  for (const SeenState& state : states)
    for (const SeenIsotope& seen : state) count += seen.intensity > 0.0;
  return count;
}

struct Sums {
  double observed = 0.0;
  double product = 0.0;
  double expected = 0.0;

  double Scale() const { return expected > 0.0 ? std::max(product, 0.0) / expected : 0.0; }
};

Sums SumsOf(const SeenState& state, const VisiblePattern& pattern, std::int32_t shift) {
  Sums sums;
  for (const SeenIsotope& seen : state) {
    const double weight = 1.0 / (seen.error * seen.error);
    const double probability = ProbabilityOf(pattern, seen.isotope - shift);
    sums.observed += weight * seen.intensity * seen.intensity;
    sums.product += weight * seen.intensity * probability;
    sums.expected += weight * probability * probability;
  }
  return sums;
}

double SquaresOf(std::span<const SeenState> states, const VisiblePattern& pattern, std::int32_t shift) {
  double sum = 0.0;
  for (const SeenState& state : states) {
    const Sums sums = SumsOf(state, pattern, shift);
    sum += sums.observed - sums.product * sums.Scale();
  }
  return sum;
}

double DegreesOfFreedom(std::span<const SeenState> states) {
  double places = 0.0;
  for (const SeenState& state : states) places += static_cast<double>(state.size()) - 1.0;
  return std::max(places - 1.0, 1.0);
}

}  // namespace

double ProbabilityOf(const VisiblePattern& pattern, std::int32_t isotope) {
  const std::int32_t place = isotope - pattern.firstIsotope;
  const bool isThere = place >= 0 && place < static_cast<std::int32_t>(pattern.Size());
  return isThere ? pattern.probability[static_cast<std::size_t>(place)] : 0.0;
}

double ScaleOf(const SeenState& state, const VisiblePattern& pattern, std::int32_t shift) {
  return SumsOf(state, pattern, shift).Scale();
}

PatternPlace PlaceOfPattern(std::span<const SeenState> states, const VisiblePattern& pattern) {
  constexpr PatternPlace kNotTold = {0.0, std::numeric_limits<double>::infinity()};
  if (CountSeen(states) < kLeastSeen) return kNotTold;
  constexpr std::int32_t kEnd = kMostShift + 1;
  std::array<double, 2 * kEnd + 1> squares{};
  for (std::size_t i = 0; i < squares.size(); ++i)
    squares[i] = SquaresOf(states, pattern, static_cast<std::int32_t>(i) - kEnd);
  const auto least = std::ranges::min_element(squares.begin() + 1, squares.end() - 1);
  const double opening = least[-1] + least[1] - 2.0 * *least;
  if (!(opening > 0.0)) return kNotTold;
  const double vertex = 0.5 * (least[-1] - least[1]) / opening;
  const double birge = std::max(1.0, *least / DegreesOfFreedom(states));
  return {static_cast<double>(least - squares.begin()) - kEnd + std::clamp(vertex, -0.5, 0.5),
          std::sqrt(2.0 * birge / opening)};
}

// Logarithms, as all of them may be too small for numbers.
CountChances::CountChances(const PatternPlace& place, double mass, const std::optional<PatternPlace>& kin)
    : chances_() {
  const double error = std::min(place.error, kMostError);
  const double alone = std::hypot(error, kCompositionScatter * std::sqrt(mass));
  const double withKin = kin ? std::hypot(error, kin->error, kKinScatter) : 0.0;
  for (std::size_t i = 0; i < chances_.size(); ++i) {
    const double off = ShiftOf(i) - place.shift;
    double& chance = chances_[i];
    chance = LogDensity(off, alone);
    if (kin)
      chance = LogOfSum(std::log(1.0 - kIsOfKin) + chance,
                        std::log(kIsOfKin) + LogDensity(off + kin->shift, withKin));
  }
  const double most = *std::ranges::max_element(chances_);
  double sum = 0.0;
  for (double& chance : chances_) sum += chance = std::exp(chance - most);
  for (double& chance : chances_) chance /= sum;
}

std::int32_t CountChances::Best() const {
  std::int32_t best = 0;
  double most = chances_[kFarthest];
  for (std::size_t i = 0; i < chances_.size(); ++i) {
    if (chances_[i] <= most) continue;
    most = chances_[i];
    best = ShiftOf(i);
  }
  return best;
}

double CountChances::ErrorOf(std::int32_t shift) const {
  double squares = 0.0;
  for (std::size_t i = 0; i < chances_.size(); ++i) {
    const double off = ShiftOf(i) - shift;
    squares += chances_[i] * off * off;
  }
  return std::sqrt(squares);
}

}  // namespace TslMath
