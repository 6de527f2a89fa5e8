#pragma once
// The result of a ramp as text.

#include <tool/commands/ramp/RampResponse.h>
#include <tool/commands/ramp/StepCurve.h>
#include <string>
#include <vector>

namespace TslTool {

// `tune` names the lenses.
struct RampReport {
  const RampResponse& response;
  const std::vector<LensResult>& lenses;
  const TslBL::Tune& tune;
  std::string choice;  // as "amplitude"
};

// For reading: the best values, and the curves that follow.
std::string RampTable(const RampReport& report);
// A row for each m/z and step: mz, step, a column for each lens, spectra, mz_found, amplitude, resolution,
// best and overall (1 or 0). What was not seen is empty.
std::string RampTsv(const RampReport& report);
std::string RampJson(const RampReport& report);

}  // namespace TslTool
