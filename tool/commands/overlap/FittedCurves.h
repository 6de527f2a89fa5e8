#pragma once
// The curves of fitted peaks, point by point.

#include <tool/io/SpectrumSource.h>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TslTool {

// A group on the points of its data peaks, from `first` on.
struct FittedGroup {
  std::uint32_t number;
  std::size_t first;
  std::vector<double> sum;                 // of the baseline and all peaks
  std::vector<std::vector<double>> peaks;  // each on the baseline
};

// Peaks are drawn as they were fitted, with the skew that those of a group share.
std::vector<FittedGroup> FittedGroups(const LoadedSpectrum& loaded);

}  // namespace TslTool
