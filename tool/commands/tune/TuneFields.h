#pragma once
// The fields of a tune as a user names, sees and sets them.

#include <tslbl/tune/rules/DevTuneRules.h>
#include <span>
#include <string>
#include <string_view>

namespace TslTool {

// Which tunes have a field.
enum class FieldOf { Every, Esi, Apci, Scan, Sim };

struct TuneField {
  const char* name;
  TslBL::TuneField::Id id;  // its limits, and its display name
  const char* unit;
  FieldOf of;
  // As text that `set` takes again.
  std::string (*show)(const TslBL::DevTuneRules& rules);
  // Through the field's writer. Throws UsageError with the name for a text that is no such
  // value. Null for a field that only shows.
  TslBL::DevTuneRules::ErrTypes (*set)(TslBL::DevTuneRules& rules, const std::string& name,
                                       const std::string& text);
  // Gives the field's writer what is there already. Null without a check of its own.
  TslBL::DevTuneRules::ErrTypes (*keep)(TslBL::DevTuneRules& rules);
  // See ValueNames.
  std::string (*names)();
};

struct FieldGroup {
  const char* title;
  std::span<const TuneField> fields;
};

// All of them, in the order of a tune.
std::span<const FieldGroup> TuneFieldGroups();

// Throws UsageError, with the nearest names, if there is no such field. Of the fields of
// one name, that of this tune. Case does not matter.
const TuneField& FindTuneField(const TslBL::Tune& tune, std::string_view name);

bool HasField(const TslBL::Tune& tune, const TuneField& field);

std::string DisplayName(const TuneField& field);

// The values that a field of names takes, such as "on, off"; empty for another field.
std::string ValueNames(const TuneField& field);

// Names and values are typed in any case.
bool SameText(std::string_view a, std::string_view b);

// Text from a file as it may stand on a terminal or in a line.
std::string OnOneLine(std::string text);

}  // namespace TslTool
