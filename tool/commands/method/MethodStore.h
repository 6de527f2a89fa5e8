#pragma once
// Methods from and to files, as the commands use them, with warnings on standard error.

#include <tool/commands/method/MethodFile.h>
#include <tslbl/method/MethodRules.h>
#include <string>

namespace TslTool {

// As LoadMethod, with a warning of what the tunes of a document lack. Of a run, the method that acquired it.
MethodFile LoadMethodWithWarning(const std::string& file);

// Throws InputError for a run, in which nothing is changed.
void RequireNoRun(const std::string& file);

// With a warning of what this form does not keep. Throws as Output does.
void SaveMethod(const TslBL::Method& method, RecordForm form, const std::string& file);

// A new file, which must not exist: what stands at the name stays as it is. Then tells what the rules find.
void SaveNewMethod(const TslBL::MethodRules& rules, RecordForm form, const std::string& file);

// What the rules find that they did not find in `before`.
void WarnOfMethodFaults(const std::string& file, const TslBL::MethodRules& rules,
                        const std::vector<std::string>& before = {});

}  // namespace TslTool
