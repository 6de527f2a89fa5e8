#pragma once
// The option --switch-time of the commands that work out the delays of a method: how long the instrument
// takes to change its polarity, which no method holds.

#include <tool/frame/Options.h>
#include <optional>

namespace TslTool {

class SwitchTime {
 public:
  void Declare(Options& options);
  // Seconds. Throws UsageError for a time that no instrument takes.
  double Get() const;

 private:
  std::optional<double> seconds_;
};

}  // namespace TslTool
