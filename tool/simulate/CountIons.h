#pragma once
// The noise of counting.

#include <tslbl/spectrum/RawSpectrum.h>
#include <cstdint>
#include <vector>

namespace TslTool {

// A spectrum with a Poisson number of counts in each point, and their sum. `index` makes the noise of one
// seed another one.
TslBL::RawSpectrum CountIons(std::vector<double> expected, std::uint64_t seed, std::uint32_t index);

}  // namespace TslTool
