#pragma once
// Sum formulas: reading, masses, and scaling an average building block to a mass.
#include <tslbl/Export.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace TslMath {

// A formula that cannot be read: what() has the formula, the text that is wrong and its place.
class TSLBL_API FormulaError : public std::runtime_error {
 public:
  FormulaError(std::string_view formula, std::size_t position, const std::string& reason);
  std::size_t Position() const { return position_; }  // 0-based, in bytes

 private:
  std::size_t position_;
};

// How many atoms of each element: one count, never negative, for each of Elements().
struct TSLBL_API Composition {
  std::vector<std::int64_t> counts;

  Composition();
  std::int64_t CountOf(std::string_view symbol) const;  // 0 for an element that is not known
  bool operator==(const Composition&) const = default;
};

// Reads "C117 H184 N32 O35 S1": symbols, each with a count up to 999 999 999 or none for 1; blanks between
// them are optional. An element may come more than once, and a count may begin with zeros: the average RNA
// has "P03", the three phosphates between four nucleotides. Throws FormulaError for anything else, and where
// no atom is left.
TSLBL_API Composition ParseFormula(std::string_view text);

// Mass of the most abundant isotopes, and mean mass over all isotopes, Da, neutral.
TSLBL_API double MonoMass(const Composition& composition);
TSLBL_API double AverageMass(const Composition& composition);

// The composition that matter built from `unit` has at the neutral monoisotopic mass `monoMass`: all elements
// but hydrogen in the unit's proportion, rounded to whole atoms, then as much hydrogen as the remaining mass
// holds, so that the result's mass is within half a hydrogen of monoMass. (Where rounding overshoots by more
// than the hydrogen can make good, there is no hydrogen.) Throws std::invalid_argument unless monoMass is
// finite and positive and the unit holds an atom. Source: M. Senko, S. Beu, F. McLafferty, Determination of
// monoisotopic masses and ion populations for large biomolecules from resolved isotopic distributions, 1995.
TSLBL_API Composition ScaleToMass(const Composition& unit, double monoMass);

}  // namespace TslMath
