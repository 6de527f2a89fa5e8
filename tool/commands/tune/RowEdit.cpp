#include <tool/commands/tune/RowEdit.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/frame/Numbers.h>
#include <cmath>
#include <utility>

namespace TslTool {

bool RowWords::IsNone() const { return SameText(value, "none"); }

std::optional<double> RowWords::MovesTo() const {
  if (!value.starts_with('@')) return std::nullopt;
  return ParseReal(name, value.substr(1));
}

bool IsSameMZ(double a, double b) { return std::abs(a - b) <= 1e-6; }

RowEdit::RowEdit(CalTable table, RowWords words) : words_(std::move(words)), table_(table) {}

std::optional<CalMove> RowEdit::Moves() const {
  if (!to_) return std::nullopt;
  return CalMove{table_, words_.mz, *to_};
}

void RowEdit::Follow(const CalMove& move) {
  if (move.table == table_ && IsSameMZ(words_.mz, move.from)) words_.mz = move.to;
}

}  // namespace TslTool
