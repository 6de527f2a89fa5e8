#pragma once
// The spectra of a ramp, evaluated.

#include <tool/chain/ChainOptions.h>
#include <tool/commands/ramp/RampResponse.h>
#include <tool/frame/Options.h>
#include <tool/io/ScanOptions.h>
#include <string>
#include <vector>

namespace TslTool {

struct RampEvaluation {
  std::string run;
  ScanOptions scans;
  ChainOptions chain;
  std::vector<double> mz;
  double window = 1.0;  // m/z to either side
  bool quiet = false;
};

// The base peak around each m/z in each spectrum. Tells what of the chain was taken from the data. Throws
// InputError.
RampSpectra EvaluateRamp(const RampEvaluation& evaluation, const Options& options, const RampSteps& steps);

}  // namespace TslTool
