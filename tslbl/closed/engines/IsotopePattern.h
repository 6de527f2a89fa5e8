#pragma once
// Aggregated isotope patterns: how likely a molecule is to be k neutrons heavier than its monoisotopic form,
// and how heavy such molecules are on average. Fine structure inside a nominal mass, which no quadrupole
// resolves, is summed.
//
// Method: every element's distribution is raised to its atom count by repeated squaring, and the powers are
// convolved; each place carries its probability and its mean mass, so the masses are exact for the places
// kept. Sources: H. Kubinyi, Calculation of isotope distributions in mass spectrometry: a trivial solution
// for a non-trivial problem, 1991 (squaring); A. Rockwood, P. Haimi, Efficient calculation of accurate masses
// of isotopic peaks, 2006 (mean masses).
#include <tslbl/Export.h>
#include <tslbl/closed/engines/Formula.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace TslMath {

// Place i stands for the nominal offset firstOffset + i from the monoisotopic form. firstOffset is above 0
// where that form is too rare to be kept, and below 0 where an element has isotopes lighter than its main one
// (Fe, Li).
struct TSLBL_API IsotopePattern {
  std::int32_t firstOffset = 0;
  std::vector<double> probability;  // sums to 1 within 1e-12
  std::vector<double> mass;         // Da, relative to monoMass; the offset itself where the probability is 0
  double monoMass = 0;              // Da, neutral

  std::size_t Top() const;  // the most probable place; of equal ones the first
  double Mean() const;      // Da, relative to monoMass
};

// What to leave out, both fractions of 1.
//
//   atom      isotopes rarer than this are left out and the element's others renormalised; the
//             most abundant isotope always stays.
//   molecule  leading and trailing places less probable than this are left out at the end, and
//             those less probable than a thousandth of it, or than 1e-30, on the way; the most
//             probable place always stays, and nothing inside goes.
//
// With 1e-6 each, probabilities above 1e-3 are within 1e-5 (relative) and masses within 1e-7 Da of the full
// pattern.
struct IsotopeThresholds {
  double atom = 1e-6;
  double molecule = 1e-6;
};

// Cost: microseconds up to 60 kDa with the thresholds above, linear in the mass. The empty composition gives
// one place of offset 0.
TSLBL_API IsotopePattern MakeIsotopePattern(const Composition& composition,
                                            const IsotopeThresholds& thresholds = {});

// Patterns of matter built from one unit, for many masses: one pattern for each 0.4 % of mass, that of the
// middle of the bin, whose relative masses and probabilities serve the whole bin. Not for use by two threads
// at once.
class TSLBL_API IsotopePatternCache {
 public:
  IsotopePatternCache(const Composition& unit, const IsotopeThresholds& thresholds);

  // For a neutral monoisotopic mass, finite and positive, else std::invalid_argument. The reference stays
  // valid as long as the cache lives.
  const IsotopePattern& At(double monoMass);

 private:
  Composition unit_;
  IsotopeThresholds thresholds_;
  std::unordered_map<std::int32_t, IsotopePattern> patterns_;
};

}  // namespace TslMath
