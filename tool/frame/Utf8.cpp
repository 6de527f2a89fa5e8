#include <tool/frame/Utf8.h>

namespace TslTool {
namespace {

unsigned ByteAt(std::string_view text, std::size_t at) { return static_cast<unsigned char>(text[at]); }

}  // namespace

Utf8Character FirstCharacter(std::string_view text) {
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

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character character = FirstCharacter(text);
    if (!character.isValid) return false;
    text.remove_prefix(character.bytes);
  }
  return true;
}

std::string ToUtf8(std::string text) {
  if (IsUtf8(text)) return text;
  std::string utf8;
  for (const char byte : text) {
    const unsigned code = static_cast<unsigned char>(byte);
    if (code >= 0x80) utf8 += static_cast<char>(0xc0 | code >> 6);
    utf8 += static_cast<char>(code < 0x80 ? code : 0x80 | (code & 0x3f));
  }
  return utf8;
}

}  // namespace TslTool
