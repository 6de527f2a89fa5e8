#pragma once
// What stands before the numbers of a text file, and the first lines with numbers.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <tool/io/ColumnNames.h>
#include <tool/io/LineReader.h>

namespace TslTool {

struct TextLine {
  std::uint64_t number = 0;  // 1-based, in the file
  std::string text;
};

struct TextHead {
  std::uint64_t words = 0;     // lines before the numbers that are neither empty nor comments
  std::vector<TextLine> last;  // the last of the lines before the numbers, at most three, comments among them
  TextLine first;              // the first line of words
  double multiplier = 1.0;     // of the amplitudes, as a line "Intensity Multiplier" tells
  std::vector<TextLine>
      sample;  // the first rows, comments and empty lines among them; empty: there are no numbers
};

// A line with '#', '%', "//" or ';' in front; where semicolons separate columns, the latter is an empty
// field.
bool IsComment(std::string_view line, char separator);

// The line up to a '#'.
std::string_view WithoutComment(std::string_view line);

// Finds the two columns by the names in a line; nothing if it has none.
using FindNames = std::function<std::optional<ColumnPair>(const std::vector<std::string_view>& names)>;

// Numbers begin at the first line that has nothing else, or below the names of the two columns at a line that
// has a number in one of them. Takes at most 1000 lines from there. Throws InputError for a line that is no
// text, and where no numbers begin in the first 100,000 lines.
TextHead ReadHead(LineReader& lines, const ColumnChoice& choice, const FindNames& find);
// The columns are those of m/z and amplitude.
TextHead ReadHead(LineReader& lines, const ColumnChoice& choice);

}  // namespace TslTool
