#pragma once
// One change of a tune, as a user types it.

#include <tslbl/tune/rules/DevTuneRules.h>
#include <string>

namespace TslTool {

struct EditResult {
  bool refused;
  std::string text;  // the rule's message, or a warning; else empty
};

// "FIELD=VALUE" through the field's writer. Throws UsageError for what is no change: no
// such field, a text that is no value for it.
EditResult Edit(TslBL::DevTuneRules& rules, const std::string& edit);

// How the field of a change stands.
std::string ShownOf(const TslBL::DevTuneRules& rules, const std::string& edit);

}  // namespace TslTool
