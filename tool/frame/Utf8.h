#pragma once
// Text as UTF-8: the encoding of everything that the tool writes.

#include <cstddef>
#include <string>
#include <string_view>

namespace TslTool {

struct Utf8Character {
  std::size_t bytes = 1;
  char32_t code = 0;
  bool isValid = false;
};

// The first character of a text that is not empty. Longer forms than needed, halves of surrogate pairs and
// what lies beyond U+10FFFF are not valid; of what is not valid one byte is taken.
Utf8Character FirstCharacter(std::string_view text);

bool IsUtf8(std::string_view text);

// The text as it is if it is UTF-8, else as Latin-1, in which every byte is a character.
std::string ToUtf8(std::string text);

}  // namespace TslTool
