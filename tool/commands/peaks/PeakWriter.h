#pragma once
// Peak tables in their formats.

#include <tool/commands/peaks/ReportedPeak.h>
#include <tool/commands/peaks/SpectrumWriter.h>
#include <memory>
#include <string>
#include <vector>

namespace TslTool {

class PeakWriter : public SpectrumWriter {
 public:
  std::string PartOf(const LoadedSpectrum& loaded) const final { return Part(loaded, ReportedPeaks(loaded)); }
  virtual std::string Part(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& peaks) const = 0;
};

// The formats: "table" for reading, "tsv", "csv", "json", "xml" and "mzml" for programs.
const std::vector<std::string>& PeakFormats();
std::unique_ptr<PeakWriter> MakePeakWriter(const std::string& format);

}  // namespace TslTool
