#pragma once
// What an analyst must know of evaluated spectra before he believes their peaks.

#include <tool/commands/peaks/Evaluation.h>
#include <tool/io/SpectrumSource.h>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace TslTool {

// Spectra with some trouble: how many, and the first of them.
class Troubled {
 public:
  // `where` is added to the scan, as in "m/z 200.1". On any number of threads.
  void Add(std::uint32_t scan, const std::string& where = "");
  // As in "2 spectra with a hump (first at scan 3, m/z 200.1); --off helps"; empty if there is none.
  std::string Text(const std::string& trouble, const std::string& wayOut) const;

 private:
  std::mutex mutex_;
  std::uint64_t count_ = 0;
  std::uint32_t first_ = 0;
  std::string where_;
};

class EvaluationRemarks {
 public:
  // Takes a spectrum and what its evaluation met. On any number of threads.
  void Look(const LoadedSpectrum& loaded, const Findings& findings);
  // What the evaluation did, that nobody need worry about.
  std::vector<std::string> Notes() const;
  // One for each kind of trouble, with the number of spectra and the way out.
  std::vector<std::string> Texts() const;

 private:
  void LookAtPeaks(const LoadedSpectrum& loaded);

  std::atomic<std::uint64_t> leftOut_ = 0;    // peaks
  std::atomic<std::uint64_t> spikes_ = 0;     // peaks of a single point that were left out
  std::atomic<std::uint64_t> crowded_ = 0;    // a tenth of the points with less noise than was found
  std::atomic<std::uint64_t> cut_ = 0;        // amplitudes below 0 are lost
  std::atomic<std::uint64_t> noiseless_ = 0;  // peaks whose noise is too small for a ratio
  std::atomic<std::uint64_t> huge_ = 0;       // peaks whose noise is too large for its square
  std::atomic<std::uint64_t> short_ = 0;      // fewer points than the smoothing's window
  std::atomic<std::uint32_t> evenWidth_ = 0;  // of a window that must be odd; 0: it is
  Troubled flat_;                             // the detector was at its end
  Troubled reshaped_;                         // the smoothing's window does not suit the peaks
  Troubled still_;                            // a background without scatter
  Troubled clipped_;                          // noise that ends at 0
  Troubled wide_;                             // background that passes for peaks
  Troubled cutOff_;                           // windows of points are too short for their peaks
  Troubled spiky_;                            // peaks of a single point that were not
  Troubled loud_;                             // the noise is that of peaks
  Troubled narrow_;                           // spectra, hardly wider than a peak
  Troubled few_;                              // points, too few to tell a peak from its background
};

}  // namespace TslTool
