#pragma once
// Peak lists as centroid spectra of an indexed mzML file.

#include <tool/commands/peaks/MzMLHeader.h>
#include <tool/commands/peaks/PeakWriter.h>
#include <tool/io/IndexedMzML.h>
#include <atomic>
#include <optional>

namespace TslTool {

// The file can be written only when the last spectrum is there, as its head tells how many there are.
class MzMLWriter final : public PeakWriter {
 public:
  void Describe(const PeakOrigin& origin) override { origin_ = origin; }
  // An element <spectrum>. Throws InputError for a peak that the format cannot hold.
  std::string Part(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& peaks) const override;
  void Write(Output& output, const std::string& part, bool isFirst) override;
  void Finish(Output& output) override;

 private:
  MzMLContent Content() const;
  const CvTerm& UnitOf(const LoadedSpectrum& loaded) const;

  PeakOrigin origin_;
  std::optional<IndexedMzML> document_;
  // A bit for each kind of spectra and of ids that were seen.
  mutable std::atomic<unsigned> types_ = 0;
  mutable std::atomic<unsigned> ids_ = 0;
};

}  // namespace TslTool
