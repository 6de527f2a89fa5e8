#pragma once
// The simulated instrument: what it scans, and how well it resolves.

#include <tslbl/tune/Tune.h>
#include <vector>

namespace TslTool {

// All in m/z. What is outside the limits of a tune's fields makes a tune that no instrument takes.
struct Instrument {
  double mzLow = 100.0;
  double mzHigh = 1100.0;
  double mzStep = 0.05;
  double width = 0.6;  // of a line at half its height
};

TslBL::Tune TuneOf(const Instrument& instrument);

// The m/z of each step; those of a scan are its points, as the evaluation will have them.
std::vector<double> AxisOf(const TslBL::Tune& tune);

}  // namespace TslTool
