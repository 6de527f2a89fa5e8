#pragma once
// Peak lists as centroid spectra of an indexed mzML file.

#include <tool/commands/peaks/PeakWriter.h>
#include <tool/mzml/MzMLDocument.h>

namespace TslTool {

class MzMLWriter final : public PeakWriter {
 public:
  void Describe(const PeakOrigin& origin) override { origin_ = origin; }
  // An element <spectrum>. Throws InputError for a peak that the format cannot hold.
  std::string Part(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& peaks) const override;
  void Write(Output& output, const std::string& part, bool isFirst) override;
  void Finish(Output& output) override;

 private:
  const CvTerm& UnitOf(const LoadedSpectrum& loaded) const;

  PeakOrigin origin_;
  mutable MzMLDocument document_;  // making an element notes its kind, which is safe on any thread
};

}  // namespace TslTool
