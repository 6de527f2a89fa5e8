#pragma once
// Reads the m/z and the amplitude in a row of a text file.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <tool/io/TextDialect.h>

namespace TslTool {

struct TextPoint {
  double mz = 0;
  double amplitude = 0;
};

// Whether a row has two numbers with decimal points, separated by blanks with at most one comma or semicolon
// among them; one separator may follow.
bool IsPlainRow(std::string_view row);

// Whether a line of words begins with a number and has as many columns as the rows: it is one of them,
// damaged.
bool IsDamagedRow(std::string_view line, const TextDialect& dialect);

// A line or a row as it may stand in a message.
std::string Shown(std::string_view row);

// The message for a row of one column.
std::string OneColumn(std::string_view row);

class RowReader {
 public:
  explicit RowReader(const TextDialect& dialect) : dialect_(dialect) {}

  // The point in a row without comment; nothing for an empty row. Throws std::runtime_error with the reason
  // why there is none: another number of columns, a text that is no number, a negative m/z, another spectrum.
  std::optional<TextPoint> Read(std::string_view row);

  // The first number whose comma may be a mark for thousands as well, if no number read so far has shown what
  // commas are. Empty: there is none.
  std::string_view UnclearNumber() const { return isClear_ ? std::string_view() : unclear_; }

 private:
  TextPoint ReadTable(std::string_view row);
  void RequireSameScan();
  void RequireSameTime();
  double Number(std::string_view field, bool isMz);

  TextDialect dialect_;
  std::vector<std::string_view> fields_;
  std::string unclear_;
  bool isClear_ = false;
  std::optional<std::string> scan_;
  std::optional<std::string> time_;
  bool isOfSeveral_ = false;  // whether a time is that of several points
};

}  // namespace TslTool
