#pragma once
// Foreign text as it may stand in a message.

#include <algorithm>
#include <string>
#include <string_view>

namespace TslTool {

// At most `length` characters; what is not plain ASCII shows as '?', so that a damaged file cannot garble a
// terminal.
inline std::string Printable(std::string_view text, std::size_t length = 40) {
  std::string shown(text.substr(0, length));
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return c < 0x20 || c > 0x7e; }, '?');
  return text.size() > length ? shown + "..." : shown;
}

}  // namespace TslTool
