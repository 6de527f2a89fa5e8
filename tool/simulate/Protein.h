#pragma once
// Proteins as electrospray shows them: in many charge states side by side.

#include <tool/frame/Numbers.h>
#include <tool/simulate/Instrument.h>
#include <tool/simulate/Sample.h>
#include <string>

namespace TslTool {

// Average masses, in Da.
inline constexpr double kLeastProteinMass = 500.0;
inline constexpr double kMostProteinMass = 2e6;

// No molecule of this mass has more: one for each 100 Da, which is less than a residue.
std::uint32_t MostCharges(double averageMass);

// Those whose m/z the instrument scans; `from` is above `to` if there are none.
CountRange ScannedCharges(double averageMass, const Instrument& instrument);
// Those that a protein unfolded in an acidic solvent shows most, at m/z 700 to 1500.
CountRange UsualCharges(double averageMass);

// `from` above `to` if they have none in common.
CountRange Common(const CountRange& a, const CountRange& b);

// A protein that is infused all along. The heights of its charge states follow a Gaussian around the middle
// of `charges`, a tenth of the highest at both ends. `height`: of the highest, in counts a point.
Compound InfusedProtein(const std::string& name, double averageMass, const CountRange& charges,
                        double height);

}  // namespace TslTool
