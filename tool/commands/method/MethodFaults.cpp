#include <tool/commands/method/MethodFaults.h>

#include <fmt/format.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tslbl/closed/common/Text.h>

namespace TslTool {

std::vector<std::string> MethodFaults(const TslBL::MethodRules& rules) {
  std::vector<std::string> faults;
  for (const auto& [id, tune] : rules.Tunes) {
    if (id == TslBL::Method::INVALID_ID) faults.push_back("tune 0: Tune id is invalid.");
    for (const std::string& fault : TuneFaults(tune)) faults.push_back(fmt::format("tune {}: {}", id, fault));
  }
  for (const TslBL::MethodRules::Fault& fault : rules.QFaults())
    if (fault.part != TslBL::MethodRules::Part::Tunes)
      faults.push_back(OnOneLine(TslCommon::ToUtf8(fault.text)));
  return faults;
}

}  // namespace TslTool
