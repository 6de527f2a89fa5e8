#include <tool/frame/Printable.h>

#include <tool/frame/Utf8.h>
#include <tool/frame/Visible.h>

#include <algorithm>

namespace TslTool {
namespace {

struct Range {
  char32_t from, to;
};
constexpr Range kUnseen[] = {{0xa0, 0xa0},     {0xad, 0xad},     {0x1680, 0x1680}, {0x2000, 0x200f},
                             {0x202f, 0x202f}, {0x205f, 0x2060}, {0x3000, 0x3000}, {0xfeff, 0xfeff}};

bool IsUnseen(char32_t code) {
  return std::ranges::any_of(kUnseen,
                             [&](const Range& range) { return range.from <= code && code <= range.to; });
}

}  // namespace

std::string Printable(std::string_view text, std::size_t length) {
  std::string shown;
  for (std::size_t count = 0; !text.empty(); ++count) {
    if (count == length) return shown + "...";
    const Utf8Character character = FirstCharacter(text);
    shown += character.isValid && IsUnseen(character.code) ? WrittenOut(character)
                                                           : Visible(text.substr(0, character.bytes));
    text.remove_prefix(character.bytes);
  }
  return shown;
}

}  // namespace TslTool
