#pragma once
// The evaluated curves themselves, point by point, for plots and for other programs.

#include <tool/Output.h>
#include <tool/SpectrumSource.h>
#include <string>

namespace TslTool {

// Columns scan, rt_s, mz, amplitude, baseline, noise, with full precision. What the chain
// did not compute is left empty; without any command the amplitudes are those of the file.
class CurveWriter {
 public:
  explicit CurveWriter(const std::string& path);
  void Write(const LoadedSpectrum& loaded);
  void Commit() { output_.Commit(); }

 private:
  Output output_;
};

}  // namespace TslTool
