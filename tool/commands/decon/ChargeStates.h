#pragma once
// How the command decon deconvolves an evaluated spectrum: the search, and the edits of its series.

#include <tool/commands/decon/DeconOptions.h>
#include <tool/commands/decon/MoleculeCheck.h>
#include <tool/commands/decon/SeriesEdits.h>
#include <tool/commands/overlap/Deconvolution.h>
#include <tool/commands/peaks/ScanEdits.h>
#include <tool/io/SpectrumSource.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace TslTool {

class ChargeStates {
 public:
  // `input` is how errors name it.
  ChargeStates(std::string input, DeconWishes wishes, ScanEdits<SeriesEdit>& edits);

  // Makes a DeconSpectrum of the spectrum. On any number of threads. Throws InputError that names the scan.
  void Run(LoadedSpectrum& loaded);

  // What was done, as in "12 series in 3 of 5 spectra; isotopes looked for at charges to 4".
  std::string Note() const;
  // Of overlapping peaks that were taken apart, and of molecules that are of another kind.
  std::vector<std::string> Warnings() const;

 private:
  std::unique_ptr<TslBL::DeconSpectrum> Find(LoadedSpectrum& loaded);
  std::unique_ptr<TslBL::DeconSpectrum> Deconvolved(const LoadedSpectrum& loaded,
                                                    const TslBL::ChargeStateParams& params);
  std::unique_ptr<TslBL::DeconSpectrum> WithLinesApart(LoadedSpectrum& loaded,
                                                       TslBL::ChargeStateParams params,
                                                       std::unique_ptr<TslBL::DeconSpectrum> spectrum);
  std::unique_ptr<TslBL::DeconSpectrum> WithIsotopesApart(LoadedSpectrum& loaded,
                                                          TslBL::ChargeStateParams params,
                                                          std::unique_ptr<TslBL::DeconSpectrum> spectrum);
  void Count(const TslBL::DeconSpectrum& spectrum);

  std::string input_;
  DeconWishes wishes_;
  ScanEdits<SeriesEdit>& edits_;
  Deconvolution overlap_;  // that was asked for, or of isotopes
  Deconvolution lines_;    // of proteins
  MoleculeCheck molecules_;
  std::atomic<std::uint64_t> spectra_ = 0;
  std::atomic<std::uint64_t> withSeries_ = 0;
  std::atomic<std::uint64_t> series_ = 0;
  std::atomic<std::uint64_t> ofChance_ = 0;       // series
  std::atomic<std::uint64_t> isotopesApart_ = 0;  // spectra, without being asked to
  std::atomic<std::uint64_t> linesApart_ = 0;
  mutable std::mutex mutex_;
  std::uint32_t leastMaxCharge_ = 0;  // of isotopes that are resolved; 0: no spectrum yet
  std::uint32_t mostMaxCharge_ = 0;
};

}  // namespace TslTool
