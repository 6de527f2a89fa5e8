#pragma once
// FIELD=VALUE.

#include <tool/commands/tune/TuneEdit.h>
#include <memory>
#include <string>

namespace TslTool {

// Throws UsageError for a name that no field has, and for a field that cannot be set.
std::unique_ptr<TuneEdit> MakeFieldEdit(const TslBL::Tune& tune, const std::string& name,
                                        const std::string& value);

// What is set as one and stands in several fields, for a help.
std::string CombinedForms();

}  // namespace TslTool
