#pragma once
// What each step of a ramp has yielded at each m/z, and which step is best.

#include <tool/commands/ramp/RampSteps.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/tune/ramp/RampAlgorithmParams.h>
#include <tslbl/tune/ramp/RampResults.h>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace TslTool {

// Spectra by their numbers: the step of each, and the base peak in each range; an amplitude of 0 where there
// is none.
struct RampSpectrum {
  std::size_t step;
  std::vector<TslBL::MZPeak> peaks;
};
using RampSpectra = std::map<std::uint32_t, RampSpectrum>;

struct RampResponse {
  RampSteps steps;
  std::vector<std::uint32_t> spectra;  // of each step
  std::vector<double> mz;              // that was asked for and seen
  std::vector<double> unseen;          // that no step has shown a peak at
  // By m/z and step, the mean of the spectra: of the amplitude over all of them, of m/z and resolution over
  // those that have a peak.
  std::vector<std::vector<TslBL::SpectrumBasePeak>> peaks;
  std::vector<std::uint32_t> best;  // step of each m/z
  std::uint32_t overall = 0;
  // Percent by which the overall step may be below the best at an m/z, as it was asked for; and as it had to
  // be, so that any step is.
  std::uint32_t percentAsked = 0;
  std::uint32_t percent = 0;
};

// Throws RampError if a step has no spectrum, or no m/z was seen.
RampResponse MakeRampResponse(const RampSteps& steps, const std::vector<double>& mz,
                              const RampSpectra& spectra, const TslBL::RampAlgorithmParams& params);

// What of it is not to be trusted, for warnings. `tune` names the lenses.
std::vector<std::string> RampRemarks(const RampResponse& response, const TslBL::Tune& tune);

}  // namespace TslTool
