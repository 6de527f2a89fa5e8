#pragma once
// How the command overlap deconvolves an evaluated spectrum: the run, and the edits of its groups.

#include <tool/commands/overlap/GroupEdits.h>
#include <tool/commands/overlap/OverlapOptions.h>
#include <tool/commands/overlap/WidthCheck.h>
#include <tool/commands/peaks/EvaluationRemarks.h>
#include <tool/commands/peaks/ScanEdits.h>
#include <tool/io/SpectrumSource.h>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace TslTool {

class Deconvolution {
 public:
  // `input` is how errors name it. `edits` are by scan; `editsOfOne` go to the one spectrum that there is.
  Deconvolution(std::string input, const OverlapOptions& options, EditsByScan edits,
                std::vector<GroupEdit> editsOfOne, bool isResumed = false);

  // On any number of threads. Throws InputError that names the scan.
  void Run(LoadedSpectrum& loaded);

  // What was done, as in "12 groups of 27 fitted peaks".
  std::string Note() const;
  // Such as fits that leave more than noise, and edits of scans that never came.
  std::vector<std::string> Warnings() const;

 private:
  void DeconvolveAndEdit(LoadedSpectrum& loaded, const std::vector<GroupEdit>& edits);
  void Count(const LoadedSpectrum& loaded);

  std::string input_;
  OverlapOptions options_;
  ScanEdits<GroupEdit> edits_;
  std::atomic<std::uint64_t> groups_ = 0;
  std::atomic<std::uint64_t> peaks_ = 0;
  Troubled poor_;        // spectra with a fit that leaves more than noise
  Troubled notGrouped_;  // spectra whose peaks the library cannot group
  std::mutex mutex_;     // of what follows
  WidthCheck widths_;
};

}  // namespace TslTool
