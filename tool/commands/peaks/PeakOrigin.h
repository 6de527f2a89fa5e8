#pragma once
// Where the peaks of a table come from.

#include <tool/io/Scan.h>
#include <tslbl/curve/CurveEval.h>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

struct PeakOrigin {
  std::string input;  // its path; empty for the demonstration run
  IdFormat ids;
  std::vector<TslBL::CurveEval> chain;
  std::optional<double> scale = std::nullopt;  // that the amplitudes were multiplied by before
};

}  // namespace TslTool
