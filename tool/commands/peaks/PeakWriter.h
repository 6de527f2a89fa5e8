#pragma once
// Peak tables: a head, a part for each spectrum, and a tail.

#include <tool/commands/peaks/PeakOrigin.h>
#include <tool/commands/peaks/ReportedPeak.h>
#include <tool/frame/Output.h>
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

  // A format that tells where its peaks come from is told before the first part.
  virtual void Describe(const PeakOrigin&) {}
  // What a format does that cannot write its parts as they come: one thread, the parts in their order.
  virtual void Write(Output& output, const std::string& part, bool isFirst) {
    output.Write(isFirst ? Head() : Between());
    output.Write(part);
  }
  virtual void Finish(Output& output) { output.Write(Tail()); }
};

// The formats: "table" for reading, "tsv", "csv", "json", "xml" and "mzml" for programs.
const std::vector<std::string>& PeakFormats();
std::unique_ptr<PeakWriter> MakePeakWriter(const std::string& format);

}  // namespace TslTool
