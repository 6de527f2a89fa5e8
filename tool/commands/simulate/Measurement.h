#pragma once
// What is simulated, spectrum by spectrum, whether the demonstration instrument or a method asks for it.

#include <tool/io/RunFile.h>
#include <tool/simulate/ExpectedCounts.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <cstdint>
#include <functional>
#include <vector>

namespace TslTool {

struct Measurement {
  std::uint64_t spectra;
  // The tunes, and what else stands in a run before its spectra.
  std::function<void(RunWriter& run)> writeHead;
  // The next spectrum and what is in it; false behind the last.
  std::function<bool(TslBL::RawSpectrum& raw, std::vector<TrueLine>& truth)> next;
};

}  // namespace TslTool
