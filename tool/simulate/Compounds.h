#pragma once
// The samples of the demonstration instrument.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace TslTool {

struct ChargeState {
  std::uint32_t charge;
  double share;  // height relative to the compound's own
};

struct Compound {
  std::string name;
  std::string formula;  // empty: an average protein of this mass
  double mass;          // Da, monoisotopic, for a compound without formula
  std::vector<ChargeState> charges;
  double height;        // counts a point at the top of elution, of the highest line
  double elutesAt;      // fraction of the run
  double elutionWidth;  // half width, fraction of the run; 0: infused all along
};

std::span<const Compound> DemonstrationCompounds();

}  // namespace TslTool
