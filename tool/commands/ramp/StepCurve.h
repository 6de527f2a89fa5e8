#pragma once
// What a ramp changes in a tune: for each lens its one best value, and its curve over m/z.

#include <tool/commands/ramp/RampResponse.h>
#include <tslbl/tune/Q1CalPt.h>
#include <tslbl/tune/Tune.h>
#include <utility>
#include <vector>

namespace TslTool {

struct LensResult {
  TslBL::TuneField::Id field;
  double value;  // overall
  // m/z and value, ascending: the curve that the lens has in the tune, with the best values in the place of
  // the points near to their m/z. Empty for a lens that cannot follow m/z.
  std::vector<std::pair<double, double>> curve;
};

std::vector<LensResult> LensResults(const RampResponse& response, const std::vector<TslBL::Q1CalPt>& table);

}  // namespace TslTool
