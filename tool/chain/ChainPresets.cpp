#include <tool/chain/ChainPresets.h>

namespace TslTool {

ChainPresets PresetsForSpectra() {
  ChainPresets presets;
  presets.smooth = TslBL::SmoothParams::DefaultMS();
  // The whole axis, whatever it begins with.
  presets.smooth.Steps.front().Value = 0.0;
  presets.baseline = TslBL::BaselineParams::DefaultMS();
  presets.noise = TslBL::NoiseParams::DefaultMS();
  presets.peaks = TslBL::PeakDetectParams::DefaultMS();
  presets.baselineHow = presets.noiseHow = "linear";
  // Two equal lines of a quadrupole, 1 m/z apart and 0.6 wide, leave a valley of 29 % that
  // smoothing lifts: the library's 25 would take them for one.
  presets.valley = 50.0;
  // More of a peak tells its place better, until its neighbours do.
  presets.position = "centroid:30";
  presets.unit = "m/z";
  presets.hasSearch = true;
  presets.chainHelp = "see --show-chain";
  presets.smoothHelp = "savgol over 1.1 widths of a peak";
  presets.baselineHelp = "linear, segments of 40 widths of a peak";
  presets.noiseHelp = "linear, segments as for the baseline";
  presets.snHelp = "5 to 7, by width and number of points";
  presets.minWidthHelp = "0.55 widths of a peak, unless --smooth is given";
  return presets;
}

ChainPresets PresetsForChromatograms() {
  ChainPresets presets;
  presets.smooth = TslBL::SmoothParams::DefaultIC();
  presets.baseline = TslBL::BaselineParams::DefaultIC();
  presets.noise = TslBL::NoiseParams::DefaultIC();
  presets.peaks = TslBL::PeakDetectParams::DefaultIC();
  presets.baselineHow = presets.noiseHow = "auto";
  // Peaks 2.5 standard deviations apart are two, if neither is small beside the other: their areas are told
  // apart by a fit, and smoothing over half a width leaves no valleys of noise so deep.
  presets.valley = 75.0;
  // Chromatographers call the top of a peak its retention time, however much it tails.
  presets.position = "top";
  presets.unit = "s";
  presets.chainHelp = "as peaks --show-chain prints one";
  presets.smoothHelp = "savgol over half a width of a peak, 0.9 of weak ones; mean:5 if none tells its width";
  presets.baselineHelp =
      "linear, segments of 40 widths of a peak; adaptive, segments of 3 widths, where the background bends; "
      "valley:50 if none tells it";
  presets.noiseHelp = "linear, segments of 40 widths of a peak; valley:250 if none tells it";
  presets.snHelp = "5";
  presets.minWidthHelp = "0.4 widths of a peak, unless --smooth is given";
  return presets;
}

}  // namespace TslTool
