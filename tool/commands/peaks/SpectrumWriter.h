#pragma once
// A result of many spectra: a head, a part for each spectrum, and a tail.

#include <tool/commands/peaks/PeakOrigin.h>
#include <tool/frame/Output.h>
#include <tool/io/SpectrumSource.h>
#include <string>

namespace TslTool {

class SpectrumWriter {
 public:
  virtual ~SpectrumWriter() = default;
  virtual std::string Head() const { return ""; }
  // Any number of threads may ask for the parts of their spectra.
  virtual std::string PartOf(const LoadedSpectrum& loaded) const = 0;
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

}  // namespace TslTool
