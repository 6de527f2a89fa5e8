#pragma once
// One change of a method, as a user types it: "FIELD=VALUE" of the method, "P0.FIELD=VALUE" of a time period,
// "P0/1.FIELD=VALUE" of a run or of its tune, and "P0=remove" or "P0/1=up" of a place itself.

#include <tool/commands/tune/TuneEdit.h>
#include <tslbl/method/MethodRules.h>
#include <string>

namespace TslTool {

// Makes the change under the rules. Throws UsageError for what is no change: no such place or field, or a
// text that is no value of it; InputError for a file that it names and that cannot be taken.
EditResult EditMethod(TslBL::MethodRules& rules, const std::string& text);

// What may be changed, a line or more for each, for a help.
std::string MethodEditForms();

}  // namespace TslTool
