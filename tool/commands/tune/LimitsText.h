#pragma once
// The values that a field takes, in words.

#include <tslbl/tune/FieldRow.h>
#include <optional>
#include <string>

namespace TslTool {

// Such as "5 to 3000 by 0.05". With a gap in them "25 (off), or 150 to 350 by 5": the one value
// below it is where such a field is off. Empty for limits that are none.
std::string LimitsText(const TslBL::Limits& limits, const std::optional<TslBL::Gap>& gap);

}  // namespace TslTool
