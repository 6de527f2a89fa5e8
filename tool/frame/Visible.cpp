#include <tool/frame/Visible.h>

#include <fmt/format.h>

namespace TslTool {
namespace {

struct Character {
  std::size_t bytes = 1;
  char32_t code = 0;
  bool isValid = false;
};

unsigned ByteAt(std::string_view text, std::size_t at) { return static_cast<unsigned char>(text[at]); }

// The first one, by the shortest form that UTF-8 allows.
Character FirstOf(std::string_view text) {
  const unsigned lead = ByteAt(text, 0);
  if (lead < 0x80) return {1, lead, true};
  const std::size_t bytes = lead < 0xc2 ? 0 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : lead < 0xf5 ? 4 : 0;
  if (bytes == 0 || text.size() < bytes) return {1, lead, false};
  char32_t code = lead & (0x7fu >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if ((ByteAt(text, i) & 0xc0) != 0x80) return {1, lead, false};
    code = code << 6 | (ByteAt(text, i) & 0x3f);
  }
  const bool isTooLong = (bytes == 3 && code < 0x800) || (bytes == 4 && code < 0x10000);
  if (isTooLong || (0xd800 <= code && code < 0xe000) || code > 0x10ffff) return {1, lead, false};
  return {bytes, code, true};
}

// Among them the controls of 8-bit terminals, the ends of lines and the signs that change the direction.
bool Controls(char32_t code) {
  return code < 0x20 || (0x7f <= code && code < 0xa0) || code == 0x2028 || code == 0x2029 ||
         (0x202a <= code && code <= 0x202e) || (0x2066 <= code && code <= 0x2069);
}

std::string Written(const Character& character) {
  const auto code = static_cast<unsigned>(character.code);
  if (character.bytes > 1) return fmt::format("\\u{:04x}", code);
  if (code == '\n') return "\\n";
  if (code == '\t') return "\\t";
  if (code == '\r') return "\\r";
  return fmt::format("\\x{:02x}", code);
}

}  // namespace

std::string Visible(std::string_view text, std::string_view kept) {
  std::string shown;
  while (!text.empty()) {
    const Character character = FirstOf(text);
    const bool isPlain = character.isValid && !Controls(character.code);
    if (isPlain || kept.find(text.front()) != std::string_view::npos) {
      shown += text.substr(0, character.bytes);
    } else {
      shown += Written(character);
    }
    text.remove_prefix(character.bytes);
  }
  return shown;
}

}  // namespace TslTool
