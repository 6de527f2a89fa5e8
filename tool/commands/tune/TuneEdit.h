#pragma once
// One change of a tune, as a user types it.

#include <tslbl/tune/rules/DevTuneRules.h>
#include <memory>
#include <optional>
#include <string>

namespace TslTool {

struct EditResult {
  bool refused;
  std::string text;  // the rule's message, or a warning; else empty
};

// The tables of a tune whose rows have an m/z: the calibrants of the lenses, and the points of
// the m/z axis.
enum class CalTable { Calibrants, MZCalPts };

struct CalMove {
  CalTable table;
  double from;
  double to;
};

class TuneEdit {
 public:
  virtual ~TuneEdit() = default;

  // Under the rules. Throws UsageError for a text that is no value of what is changed.
  virtual EditResult Apply(TslBL::DevTuneRules& rules) const = 0;
  // How what it changes stands.
  virtual std::string Shown(const TslBL::DevTuneRules& rules) const = 0;

  // What is worked out from the rest of the tune has to wait for the other changes.
  virtual bool IsLast() const { return false; }
  // The row that it moves.
  virtual std::optional<CalMove> Moves() const { return std::nullopt; }
  // A row was moved, by this change or a later one; it may be the one that this is about.
  virtual void Follow(const CalMove& /*move*/) {}
  // Why it is without effect in this tune; empty if it has one.
  virtual std::string Idle(const TslBL::DevTuneRules& /*rules*/) const { return ""; }
};

// Throws UsageError for what is no change: no such field of the tune, or of any.
std::unique_ptr<TuneEdit> ReadTuneEdit(const TslBL::Tune& tune, const std::string& text);

}  // namespace TslTool
