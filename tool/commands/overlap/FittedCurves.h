#pragma once
// The curves of fitted peaks, point by point.

#include <tslbl/spectrum/Spectrum.h>
#include <cstddef>
#include <vector>

namespace TslTool {

// A group on the points of its data peaks, from `first` on.
struct FittedGroup {
  std::uint32_t number;
  std::size_t first;
  std::vector<double> sum;                 // of the baseline and all peaks
  std::vector<std::vector<double>> peaks;  // each on the baseline
};

std::vector<FittedGroup> FittedGroups(const TslBL::Spectrum& spectrum);

}  // namespace TslTool
