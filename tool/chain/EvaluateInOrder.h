#pragma once
// Spectra loaded and evaluated on several threads, and handed on in their order.

#include <tool/io/SpectrumSource.h>
#include <cstdint>
#include <functional>
#include <string>

namespace TslTool {

// What is written of a spectrum.
struct SpectrumTexts {
  std::string peaks;
  std::string curve;
  std::string plot = {};
  std::uint32_t scan = 0;
};

// Takes the spectra of `source` one after the other, loads each and gives it to `evaluate`,
// on any of the threads that the process-wide threading parameters allow, and what that
// returns to `write`, one at a time and in the order of the source. At most two spectra a
// thread are in work, so that memory does not grow with the source. The first failure in
// that order is thrown, once all before it is written; an interrupt at once. Returns the
// number of spectra.
std::uint64_t EvaluateInOrder(SpectrumSource& source,
                              const std::function<SpectrumTexts(LoadedSpectrum&)>& evaluate,
                              const std::function<void(const SpectrumTexts&)>& write);

}  // namespace TslTool
