#pragma once
// Lens curves and settling as a picture.

#include <tslbl/tune/Tune.h>
#include <string>
#include <vector>

namespace TslTool {

// A tune and what the legend calls it.
struct PlottedTune {
  TslBL::Tune tune;
  std::string label;
};

// An SVG document: a panel for each lens that can follow m/z, over the m/z range of the
// tunes, and one for the settling delay. One tune or two, in two colours.
std::string TunePlot(const std::vector<PlottedTune>& tunes);

}  // namespace TslTool
