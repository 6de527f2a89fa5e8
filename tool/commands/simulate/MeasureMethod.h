#pragma once
// The run that a method acquires.

#include <tool/commands/simulate/Measurement.h>
#include <tool/commands/simulate/SampleOptions.h>
#include <cstdint>
#include <string>

namespace TslTool {

struct MethodArguments {
  std::string file;
  double switchTime = 0.0;  // s, of a change of polarity
  double width = 0.0;       // m/z, of a line
  std::uint64_t seed = 0;
};

// Tells how much it will be, and warns of what the simulation leaves out. Throws InputError for a method that
// cannot be read, that the rules do not accept, or that asks for more than is simulated; UsageError for a
// sample that is none.
Measurement MeasureMethod(const MethodArguments& arguments, const SampleOptions& sample);

}  // namespace TslTool
