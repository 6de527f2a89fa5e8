#include <tool/frame/Visible.h>

#include <fmt/format.h>

namespace TslTool {
namespace {

// Among them the controls of 8-bit terminals, the ends of lines and the signs that change the direction.
bool Controls(char32_t code) {
  return code < 0x20 || (0x7f <= code && code < 0xa0) || code == 0x2028 || code == 0x2029 ||
         (0x202a <= code && code <= 0x202e) || (0x2066 <= code && code <= 0x2069);
}

}  // namespace

std::string WrittenOut(const Utf8Character& character) {
  const auto code = static_cast<unsigned>(character.code);
  if (character.bytes > 1) return fmt::format("\\u{:04x}", code);
  if (code == '\n') return "\\n";
  if (code == '\t') return "\\t";
  if (code == '\r') return "\\r";
  return fmt::format("\\x{:02x}", code);
}

std::string Visible(std::string_view text, std::string_view kept) {
  std::string shown;
  while (!text.empty()) {
    const Utf8Character character = FirstCharacter(text);
    const bool isPlain = character.isValid && !Controls(character.code);
    if (isPlain || kept.find(text.front()) != std::string_view::npos) {
      shown += text.substr(0, character.bytes);
    } else {
      shown += WrittenOut(character);
    }
    text.remove_prefix(character.bytes);
  }
  return shown;
}

}  // namespace TslTool
