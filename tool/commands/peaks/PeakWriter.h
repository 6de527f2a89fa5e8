#pragma once
// Peak tables as text: a head, a part for each spectrum, and a tail.

#include <tool/commands/peaks/ReportedPeak.h>
#include <tool/io/SpectrumSource.h>
#include <memory>
#include <string>
#include <vector>

namespace TslTool {

class PeakWriter {
 public:
  virtual ~PeakWriter() = default;
  virtual std::string Head() const { return ""; }
  // Any number of threads may ask for the parts of their spectra.
  virtual std::string Part(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& peaks) const = 0;
  virtual std::string Between() const { return ""; }  // two parts
  virtual std::string Tail() const { return ""; }
};

// The formats: "table" for reading, "tsv", "csv", "json" and "xml" for programs.
const std::vector<std::string>& PeakFormats();
std::unique_ptr<PeakWriter> MakePeakWriter(const std::string& format);

}  // namespace TslTool
