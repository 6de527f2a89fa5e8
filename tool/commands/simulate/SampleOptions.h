#pragma once
// The switches of what the simulated instrument measures.

#include <tool/frame/Options.h>
#include <tool/simulate/Instrument.h>
#include <tool/simulate/Sample.h>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

class SampleOptions {
 public:
  void Declare(Options& options);
  // The proteins asked for, or else the sample of this name. Throws UsageError.
  Sample Get(const Instrument& instrument) const;

 private:
  std::string sample_ = "demo";
  std::vector<std::string> proteins_;
  std::optional<double> background_;
};

}  // namespace TslTool
