#pragma once
// The chromatograms of one input, whatever it is.

#include <tool/commands/chrom/ChromArguments.h>
#include <tool/commands/chrom/Chromatogram.h>
#include <string>
#include <vector>

namespace TslTool {

struct MeasuredCurves {
  std::vector<Chromatogram> curves;
  std::vector<std::string> notes;     // what was taken for what, one sentence each
  std::vector<std::string> warnings;  // what was odd but readable
};

// `arguments.input` is a path as InputPath gives it. Throws UsageError for what the kind of input has not,
// and InputError.
MeasuredCurves ReadCurves(const ChromArguments& arguments);

}  // namespace TslTool
