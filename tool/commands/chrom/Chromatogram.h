#pragma once
// A chromatogram as it was measured.

#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

struct Chromatogram {
  std::string name;             // short, for tables; no two of a result have the same
  std::string title;            // what it shows
  std::vector<double> seconds;  // ascending strictly, in any distances
  std::vector<double> values;
  std::vector<std::uint32_t> scans;  // that gave the points; empty where there are none
  // Of each point, from its counts; empty where the counts are not known.
  std::vector<double> variance;
};

}  // namespace TslTool
