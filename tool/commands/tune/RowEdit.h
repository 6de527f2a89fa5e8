#pragma once
// A change of one row of a table whose rows have an m/z.

#include <tool/commands/tune/TuneEdit.h>
#include <string>

namespace TslTool {

// As typed, "NAME@MZ=VALUE".
struct RowWords {
  std::string name;  // with the m/z
  double mz;
  std::string value;

  // The value of a change that drops the row, or what it has.
  bool IsNone() const;
  // "@MZ": where the row is moved to. Throws UsageError if no number follows.
  std::optional<double> MovesTo() const;
};

// As the rules find calibrants.
bool IsSameMZ(double a, double b);

// Stays with its row where that is moved.
class RowEdit : public TuneEdit {
 public:
  std::optional<CalMove> Moves() const override;
  void Follow(const CalMove& move) override;

 protected:
  RowEdit(CalTable table, RowWords words);

  RowWords words_;
  std::optional<double> to_;

 private:
  CalTable table_;
};

}  // namespace TslTool
