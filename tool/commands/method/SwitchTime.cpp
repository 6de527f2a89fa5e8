#include <tool/commands/method/SwitchTime.h>

#include <fmt/format.h>

#include <tslbl/method/MethodRules.h>

namespace TslTool {
namespace {

constexpr double kUsual = 0.5;

}  // namespace

void SwitchTime::Declare(Options& options) {
  options.Value("--switch-time SECONDS", seconds_,
                fmt::format("How long a change of polarity takes, 0.1 to 2 [{}]", kUsual));
}

double SwitchTime::Get() const {
  if (!seconds_) return kUsual;
  TslBL::MethodRules rules(0.0);
  rules.WPolSwitchTime(*seconds_);
  if (rules.QPolSwitchTime() != *seconds_)
    throw UsageError(fmt::format("--switch-time: {} is not from 0.1 to 2 s", *seconds_));
  return *seconds_;
}

}  // namespace TslTool
