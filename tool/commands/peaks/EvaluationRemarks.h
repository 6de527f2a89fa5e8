#pragma once
// What an analyst must know of evaluated spectra before he believes their peaks.

#include <tool/io/SpectrumSource.h>
#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

class EvaluationRemarks {
 public:
  // Takes a spectrum whose chain has run with `lift` on its amplitudes. On any number of threads.
  void Look(const LoadedSpectrum& loaded, double lift);
  // One for each kind of trouble, with the number of spectra and the way out.
  std::vector<std::string> Texts() const;

 private:
  std::atomic<std::uint64_t> cut_ = 0;        // amplitudes below 0 are lost
  std::atomic<std::uint64_t> noiseless_ = 0;  // peaks whose noise is too small for a ratio
  std::atomic<std::uint64_t> short_ = 0;      // fewer points than the smoothing's window
  std::atomic<std::uint32_t> evenWidth_ = 0;  // of a window that must be odd; 0: it is
};

}  // namespace TslTool
