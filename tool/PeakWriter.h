#pragma once
// Peak tables as text, one spectrum after the other: nothing is held back, so that a run of
// any length goes through.

#include <tool/Output.h>
#include <tool/SpectrumSource.h>
#include <tslbl/records/MZPeak.h>
#include <memory>
#include <string>
#include <vector>

namespace TslTool {

class PeakWriter {
 public:
  virtual ~PeakWriter() = default;
  virtual void Begin() {}
  virtual void Write(const LoadedSpectrum& loaded, const std::vector<TslBL::MZPeak>& peaks) = 0;
  virtual void End() {}
};

// The formats: "table" for reading, "tsv", "json" and "xml" for programs. `output` must
// outlive the writer.
const std::vector<std::string>& PeakFormats();
std::unique_ptr<PeakWriter> MakePeakWriter(const std::string& format, Output& output);

}  // namespace TslTool
