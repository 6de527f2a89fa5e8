#pragma once
// What the simulated instrument measures.

#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

struct ChargeState {
  std::uint32_t charge;
  double share;  // height relative to the compound's own
};

// One that has no formula is an average protein of one of the two masses; the other is 0.
struct Compound {
  std::string name;
  std::string formula;
  double monoMass;  // Da, neutral
  std::vector<ChargeState> charges;
  double height;        // counts a point at the top of elution, of the highest line
  double elutesAt;      // fraction of the run
  double elutionWidth;  // half width, fraction of the run; 0: infused all along
  double averageMass = 0.0;
};

struct Sample {
  // Counts a point that the chemical background comes down to at high m/z.
  static constexpr double kUsualBackground = 8.0;

  std::vector<Compound> compounds;
  double background = kUsualBackground;
};

Sample DemonstrationSample();

// A tuning mix by infusion: betaine and hexakis(fluoroalkoxy)phosphazines, protonated at m/z 118.0863,
// 322.0481, 622.0290, 922.0098, 1221.9906, 1521.9715, 2121.9331 and 2721.8948.
Sample CalibrantSample();

}  // namespace TslTool
