#pragma once
// Foreign text, such as names of files, as it may be shown on a terminal.

#include <tool/frame/Utf8.h>

#include <string>
#include <string_view>

namespace TslTool {

// Letters of all languages stay. Whatever could move the cursor, change colours, break the line, reverse the
// direction of writing or garble the encoding becomes plain: \n, \t, \r, \x1b for a byte and \u202e for a
// character; so do bytes that are no UTF-8. Control characters in `kept` stay.
std::string Visible(std::string_view text, std::string_view kept = "");

// A character, or a byte that is none, as such a plain text.
std::string WrittenOut(const Utf8Character& character);

}  // namespace TslTool
