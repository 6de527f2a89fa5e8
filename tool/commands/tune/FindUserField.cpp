#include <tool/commands/tune/FindUserField.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/frame/UsageError.h>
#include <algorithm>
#include <vector>

namespace TslTool {
namespace {

std::string Lower(std::string_view name) {
  std::string lower(name);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
  return lower;
}

// Names that hold the text, or that it holds.
std::vector<std::string> NamesLike(std::string_view text) {
  const std::string wanted = Lower(text);
  std::vector<std::string> names;
  for (const FieldGroup& group : UserFieldGroups())
    for (const UserField& field : group.fields) {
      const std::string name = Lower(field.name);
      const bool isLike = name.find(wanted) != std::string::npos || wanted.find(name) != std::string::npos;
      if (isLike && std::ranges::find(names, field.name) == names.end()) names.emplace_back(field.name);
    }
  return names;
}

[[noreturn]] void RefuseName(std::string_view name) {
  const std::vector<std::string> like = NamesLike(name);
  throw UsageError(fmt::format("there is no field \"{}\"; {}", name,
                               like.empty() ? "'tslbl tune set --help' lists them"
                                            : fmt::format("is {} meant?", fmt::join(like, " or "))));
}

}  // namespace

const UserField& FindUserField(const TslBL::Tune& tune, std::string_view name) {
  for (const UserField& field : CombinedFields())
    if (SameText(field.name, name)) return field;
  const UserField* found = nullptr;
  for (const FieldGroup& group : UserFieldGroups())
    for (const UserField& field : group.fields)
      if (SameText(field.name, name) && (found == nullptr || HasField(tune, field))) found = &field;
  if (found == nullptr) RefuseName(name);
  return *found;
}

const UserField* FindUserField(const TslBL::Tune& tune, TslBL::TuneField::Id id) {
  for (const FieldGroup& group : UserFieldGroups())
    for (const UserField& field : group.fields)
      if (field.id == id && HasField(tune, field)) return &field;
  return nullptr;
}

std::string UserNameOf(const TslBL::Tune& tune, TslBL::TuneField::Id id) {
  if (const UserField* field = FindUserField(tune, id)) return field->name;
  return id == TslBL::TuneField::MZCalPts ? "MZCalPts" : "Q1CalPts";
}

}  // namespace TslTool
