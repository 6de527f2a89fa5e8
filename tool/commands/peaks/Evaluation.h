#pragma once
// How the command peaks evaluates a spectrum: the chain, and what goes with it.

#include <tool/io/SpectrumSource.h>
#include <tslbl/curve/CurveEval.h>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// What an evaluation has met beside the peaks.
struct Findings {
  std::size_t leftOut = 0;            // peaks that do not rise from where they stand
  std::size_t spikes = 0;             // peaks of a single point, which are left out likewise
  std::size_t lowered = 0;            // points whose noise is more than counts make
  std::optional<double> shortWindow;  // m/z of a peak whose window of points is too short for it
};

struct Evaluation {
  std::string input;  // as it is named in errors
  std::vector<TslBL::CurveEval> chain;
  double scale = 1.0;       // of the amplitudes
  bool isLifted = false;    // negative amplitudes, for a chain that tolerates it
  double leastRise = 0.0;   // see FlankPeaks.h; 0 keeps spikes, too
  double noiseLimit = 0.0;  // see ShotLimit.h

  // Leaves the amplitudes as they were before in loaded.measured. On any number of threads. Throws InputError
  // that names the scan where a step refuses the data. A list of peaks is scaled alone.
  Findings Run(LoadedSpectrum& loaded) const;
};

}  // namespace TslTool
