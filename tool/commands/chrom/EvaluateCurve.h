#pragma once
// A chromatogram with what its evaluation finds.

#include <tool/chain/ChainOptions.h>
#include <tool/commands/chrom/Chromatogram.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Options.h>
#include <tslbl/chromatogram/ICObj.h>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// A peak as it is reported. Seconds, and units of the amplitude.
struct ChromPeak {
  double rtSeconds = 0.0;
  double height = 0.0;  // above the baseline, with what the smoothing took from it
  // Of the measured curve above the baseline from start to end, straight lines between its points.
  double area = 0.0;
  double areaError = 0.0;  // its standard error; NaN where it is not known
  double startSeconds = 0.0;
  double endSeconds = 0.0;
  double widthSeconds = 0.0;  // at half height, before the smoothing
  double signalToNoise = 0.0;
  std::uint32_t row = 0;  // of the curve's peak table
};

struct EvaluatedCurve {
  Chromatogram measured;
  TslBL::ICObj curve;  // smoothed, with baseline, noise and peak table
  std::vector<ChromPeak> peaks;
  std::size_t leftOut = 0;  // found, but without an area above the level beside them
  std::string derived;      // what of the chain was taken from the data, and why; empty: nothing
};

struct CurveEvaluation {
  std::string file;  // how messages call the input
  const ChainOptions& chain;
  const Options& options;
  // Where a user integrates by hand, seconds: one peak from the first point in it to the last, whatever
  // stands there, above the baseline as it is.
  std::optional<RealRange> integrate;
};

// Runs the chain that the switches ask for, with what the curve itself tells where they leave that open.
// Throws InputError.
EvaluatedCurve EvaluateCurve(Chromatogram measured, const CurveEvaluation& how);

}  // namespace TslTool
