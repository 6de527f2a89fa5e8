#pragma once
// How the isotopes of a large molecule are counted. Its lightest ones cannot be seen, and the tops of its
// pattern are nearly alike, so that one charge alone often fits as well an isotope further on.
//
// All charges have one pattern. It is laid on all of them at once, each with an intensity of its own, by
// weighted least squares; the sum of squares over the shift is near its least a parabola, whose vertex is
// where the pattern stands and whose opening tells how surely: P. Bevington, D. Robinson, Data Reduction and
// Error Analysis for the Physical Sciences, 2003, chapter 8. Where the points scatter by more than their
// errors, these grow: R. Birge, The calculation of errors by the method of least squares, 1932.
//
// Where the pattern stands is no whole number, as proteins differ in what they are made of: by 0.0015
// isotopes times the root of the mass in Da (`tests/oracles/composition_scatter.py`). Forms of one protein
// differ alike.
#include <tslbl/closed/engines/resolved/VisiblePatterns.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace TslMath {

// What is seen at one place of a pattern.
struct SeenIsotope {
  std::int32_t isotope;
  double intensity;  // 0 where no peak is
  double error;      // standard deviation, above 0
};

using SeenState = std::vector<SeenIsotope>;  // of one charge

struct PatternPlace {
  double shift;  // isotopes from where the average molecule's stands
  double error;  // standard error; infinite where nothing tells it
};

// How likely it is that isotopes are to be counted from so many further on, -3 to 3.
class CountChances {
 public:
  static constexpr std::int32_t kFarthest = 3;

  // `kin`: where the pattern of another form of the protein stands, once it was counted, if there is one.
  CountChances(const PatternPlace& place, double mass, const std::optional<PatternPlace>& kin);

  std::int32_t Best() const;  // of equal ones the nearest to 0
  // Isotopes, root mean square, by which this count is off.
  double ErrorOf(std::int32_t shift) const;

 private:
  static std::int32_t ShiftOf(std::size_t i) { return static_cast<std::int32_t>(i) - kFarthest; }

  std::array<double, 2 * kFarthest + 1> chances_;
};

// The share of an isotope; 0 outside the pattern.
double ProbabilityOf(const VisiblePattern& pattern, std::int32_t isotope);

// The intensity of all isotopes with which the pattern, shifted by so many, fits best.
double ScaleOf(const SeenState& state, const VisiblePattern& pattern, std::int32_t shift);

// Shifts to 2 isotopes are tried to either side. Nothing tells it for fewer than three isotopes.
PatternPlace PlaceOfPattern(std::span<const SeenState> states, const VisiblePattern& pattern);

}  // namespace TslMath
