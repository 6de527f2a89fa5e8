#pragma once
// The fields of a tune as a user names, sees and sets them.
//
// Their facts come from the library's table (tslbl/tune/FieldTable.h); what stands here is
// names, order and text. A field that the library has and no row here does not compile.

#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <span>
#include <string>

namespace TslTool {

struct UserField {
  const char* name;
  TslBL::TuneField::Id id;
  TslBL::AppliesTo appliesTo;
  // As text that `set` takes again.
  std::string (*show)(const TslBL::DevTuneRules& rules);
  // Through the field's writer. Throws UsageError with the name for a text that is no such
  // value. Null for a field that only shows.
  TslBL::DevTuneRules::ErrTypes (*set)(TslBL::DevTuneRules& rules, const std::string& name,
                                       const std::string& text);
  // Gives the field's writer what is there already. Null without a check of its own.
  TslBL::DevTuneRules::ErrTypes (*recheck)(TslBL::DevTuneRules& rules);
  // The values that a field of names takes, such as "on, off"; empty for another field.
  std::string (*valueNames)();
};

struct FieldGroup {
  const char* title;
  std::span<const UserField> fields;
};

// All of them, in the order of a tune. Rows of one name stand together.
std::span<const FieldGroup> UserFieldGroups();

// What is set as one and stands in several fields, or is another view of one.
std::span<const UserField> CombinedFields();

bool HasField(const TslBL::Tune& tune, const UserField& field);

// The name that the library has for it, and the unit of its numbers.
std::string DisplayName(const UserField& field);
std::string UnitOf(const UserField& field);

}  // namespace TslTool
