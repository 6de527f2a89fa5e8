#pragma once
// One change of a tune, as a user types it: "FIELD=VALUE", or "LENS@MZ=VALUE" for a lens at a
// calibrant.

#include <tool/commands/tune/UserFields.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <optional>
#include <string>

namespace TslTool {

struct EditResult {
  bool refused;
  std::string text;  // the rule's message, or a warning; else empty
};

class TuneEdit {
 public:
  // Throws UsageError for what is no change: no such field of the tune, or of any.
  TuneEdit(const TslBL::Tune& tune, const std::string& text);

  // Through the field's writer. Throws UsageError for a text that is no value of the field.
  EditResult Apply(TslBL::DevTuneRules& rules) const;
  // How the field stands.
  std::string Shown(const TslBL::DevTuneRules& rules) const;
  // As it was typed.
  const std::string& Text() const { return text_; }

 private:
  std::string Refusal(const TslBL::DevTuneRules& rules) const;
  TslBL::DevTuneRules::ErrTypes Write(TslBL::DevTuneRules& rules) const;

  std::string text_;
  std::string name_;
  std::string value_;
  const UserField* field_;    // of a calibrant, its lens
  std::optional<double> mz_;  // of a calibrant
};

// The forms of changes besides FIELD=VALUE, for a help.
std::string CombinedForms();
inline constexpr const char* kCalibrantForms = "LENS@MZ=VALUE LENS@MZ=none";

}  // namespace TslTool
