#pragma once
// What the switches of the evaluation chain begin with: for spectra, or for chromatograms.

#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>
#include <string>

namespace TslTool {

struct ChainPresets {
  TslBL::SmoothParams smooth;
  TslBL::BaselineParams baseline;
  TslBL::NoiseParams noise;
  TslBL::PeakDetectParams peaks;
  std::string baselineHow, noiseHow;  // as for --baseline and --noise; "auto": as the data ask for
  double valley = 0.0;
  std::string position;
  std::string unit;        // of the axis
  bool hasSearch = false;  // whether --range is the stretch to search
  // What the help tells of a chain in a file, and of the defaults that follow the width of the peaks.
  std::string chainHelp, smoothHelp, baselineHelp, noiseHelp, snHelp, minWidthHelp;
};

ChainPresets PresetsForSpectra();
ChainPresets PresetsForChromatograms();

}  // namespace TslTool
