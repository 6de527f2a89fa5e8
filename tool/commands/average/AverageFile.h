#pragma once
// An average as a file that other commands and programs read.

#include <tool/commands/average/AverageOf.h>
#include <string>
#include <vector>

namespace TslTool {

struct AverageOrigin {
  std::string input;
  std::string chosen;      // as the user typed it; empty for all
  std::string background;  // likewise; empty without one
};

// "text", "mzml" and "run".
const std::vector<std::string>& AverageFormats();

// That which the name of the output asks for: run for .run, mzml for .mzML, text for others.
std::string AverageFormatOf(const std::string& output);

// Text has a line of names and a row for each point, mz and amplitude, with full precision. mzML has one
// profile spectrum. A run has one scan, the sum of the counts, and its tune dwells as often as was summed, so
// that the count rates are those of the average. Throws InputError for what cannot be a run.
void WriteAverage(const Averaged& averaged, const AverageOrigin& origin, const std::string& format,
                  const std::string& output);

}  // namespace TslTool
