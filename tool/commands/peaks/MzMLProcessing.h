#pragma once
// A chain of evaluation commands as the steps of processing that an mzML file names.

#include <tool/commands/peaks/PeakOrigin.h>
#include <tool/mzml/MzMLHeader.h>
#include <vector>

namespace TslTool {

// The multiplication of the amplitudes, one for each command that changes the data, in the order of the
// chain, and the conversion to mzML last. What the commands were told are user parameters, named by their
// places in a chain file as in "Smooth/Passes"; those of commands that only measure, as of baseline and
// noise, stand with the step that follows. Limits that are not in use are left out.
std::vector<ProcessingMethod> MethodsOf(const PeakOrigin& origin);

}  // namespace TslTool
