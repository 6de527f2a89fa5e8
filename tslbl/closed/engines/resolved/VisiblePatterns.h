#pragma once
// Isotope patterns of the average molecule, as far as they can be seen.
#include <tslbl/closed/engines/IsotopePattern.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace TslMath {

// The isotopes that have a hundredth of the most probable one or more.
struct VisiblePattern {
  std::int32_t firstIsotope = 0;
  std::size_t top = 0;              // place of the most probable
  std::vector<double> probability;  // of each place
  std::vector<double> mass;         // Da more than the monoisotopic form has

  std::int32_t TopIsotope() const { return firstIsotope + static_cast<std::int32_t>(top); }
  std::size_t Size() const { return probability.size(); }
};

// One for each 0.4 % of mass. Not for use by two threads at once.
class VisiblePatterns {
 public:
  VisiblePatterns(const Composition& unit, const IsotopeThresholds& thresholds);

  // For 50 to 1 000 000 Da, beyond which the last ones serve.
  const VisiblePattern& At(double logMass);

 private:
  IsotopePatternCache full_;
  std::vector<std::optional<VisiblePattern>> visible_;
};

}  // namespace TslMath
