#pragma once
// The switches of the simulated instrument.

#include <tool/frame/Options.h>
#include <tool/simulate/Instrument.h>
#include <optional>
#include <string>

namespace TslTool {

class InstrumentOptions {
 public:
  void Declare(Options& options);
  // One that the rules of the instrument allow, with at least 4 points across a line. Throws UsageError.
  Instrument Get() const;

 private:
  void TakeRange(Instrument& instrument) const;
  void TakeStep(Instrument& instrument) const;
  void TakeWidth(Instrument& instrument) const;

  std::string range_;
  std::optional<double> step_;
  std::optional<double> width_;
};

}  // namespace TslTool
