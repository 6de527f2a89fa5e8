#pragma once
// Foreign text as it may stand in quotes in a message.

#include <string>
#include <string_view>

namespace TslTool {

// At most `length` characters. Letters of all languages stay; what Visible.h writes out is written out, and
// so is what looks like a blank or like nothing and is neither, as a no-break space: \u00a0. Where a number
// cannot be read, this is often why.
std::string Printable(std::string_view text, std::size_t length = 40);

}  // namespace TslTool
