#pragma once
// Where the isotopes of a compound appear.

#include <tool/simulate/Sample.h>
#include <cstdint>
#include <vector>

namespace TslTool {

inline constexpr double kProton = 1.00727646688;  // Da

struct IsotopeMass {
  double mass;   // Da, neutral
  double share;  // of all molecules
};

// Ascending. The mean mass of a protein that is given by its average mass is that mass.
std::vector<IsotopeMass> IsotopeMasses(const Compound& compound);

struct Line {
  double mz;
  double height;
};

// Of molecules with this many protons, or, of polarity -1, without so many: as high as the shares. Lines that
// lie within `blur` of one another are drawn as one at their mean.
std::vector<Line> IsotopeLines(const std::vector<IsotopeMass>& masses, std::uint32_t charge, double blur,
                               int polarity = 1);

}  // namespace TslTool
