#pragma once
// The average of spectra of one input, which are read one after the other.

#include <tool/commands/average/RunSum.h>
#include <tool/io/SpectrumSource.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

struct Averaged {
  // Number, level and polarity are those of the first spectrum, the time is the mean of all. countAmpl is of
  // one count in one of the spectra, over their number; 0 where the axes differ.
  LoadedSpectrum loaded;
  std::uint32_t spectra = 0;
  // What was summed, if that are scans of a run with one tune.
  std::optional<SummedScans> sum;
  bool isOneAxis = true;
  IdFormat ids = {};
  std::vector<std::string> notes = {};
  std::vector<std::string> warnings = {};
};

// Throws InputError, as where nothing is chosen or where spectra of several levels or of both polarities are,
// whose amplitudes have nothing in common.
Averaged AverageOf(const std::string& input, const SpectrumChoice& choice);

// Takes the amplitudes of `background`, read on straight lines, from those at the points of `averaged`.
// Amplitudes may go below 0. Returns the number of points that `background` does not reach, which stay as
// they are.
std::size_t Subtract(Averaged& averaged, const Averaged& background);

}  // namespace TslTool
