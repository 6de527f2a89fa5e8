#pragma once
// Fields by the name that a user types, and names of fields.

#include <tool/commands/tune/UserFields.h>
#include <string>
#include <string_view>

namespace TslTool {

// Combined fields too. Throws UsageError, with the nearest names, if there is no such field.
// Of the fields of one name, that of this tune. Case does not matter.
const UserField& FindUserField(const TslBL::Tune& tune, std::string_view name);

// What this tune has by that number; null for a field without a row.
const UserField* FindUserField(const TslBL::Tune& tune, TslBL::TuneField::Id id);
// Its name. A calibration has one without a row.
std::string UserNameOf(const TslBL::Tune& tune, TslBL::TuneField::Id id);

}  // namespace TslTool
