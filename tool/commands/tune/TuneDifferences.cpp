#include <tool/commands/tune/TuneDifferences.h>

#include <fmt/format.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/FindUserField.h>
#include <tool/commands/tune/PairRows.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Q1CalPt;
using TslBL::Tune;

std::string Line(const std::string& what, const std::string& a, const std::string& b) {
  const auto shown = [](const std::string& text) { return text.empty() ? "\"\"" : text; };
  return fmt::format("{}: {} -> {}", what, shown(a), shown(b));
}

// A setting of one kind of tune has no value in the other.
std::string ShownIn(const Tune& tune, const FieldGroup& group, std::string_view name) {
  for (const UserField& field : group.fields)
    if (field.name == name && HasField(tune, field)) return field.show(DevTuneRules(tune));
  return "-";
}

void AddFields(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  for (const FieldGroup& group : UserFieldGroups()) {
    std::string_view before;
    for (const UserField& field : group.fields) {
      // The rows of one name stand together.
      if (std::exchange(before, field.name) == field.name) continue;
      const std::string ofA = ShownIn(a, group, field.name);
      const std::string ofB = ShownIn(b, group, field.name);
      if (ofA != ofB) lines.push_back(Line(field.name, ofA, ofB));
    }
  }
}

std::string ShownPoint(const TslBL::MZCalPt& point) {
  return fmt::format("m/z {} DAC {} {}", point.MZ, point.MassDAC, OnOneLine(TslCommon::ToUtf8(point.Name)));
}

void AddMZCalPts(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  const auto shown = [](const TslBL::MZCalPt* point) { return point != nullptr ? ShownPoint(*point) : "-"; };
  for (const auto& [ofA, ofB, number] : PairRows(a.MZCalPts, b.MZCalPts))
    if (shown(ofA) != shown(ofB))
      lines.push_back(Line(fmt::format("MZCalPts {}", number), shown(ofA), shown(ofB)));
}

std::string NameOf(TslBL::TuneField::Id id) {
  const std::string tag = TslCommon::ToUtf8(TslBL::TuneField::FieldToPointTag(id));
  return tag == "Unknown" ? fmt::format("field {}", std::uint32_t{id}) : tag;
}

// A calibrant in words; each of its settings by name.
std::map<std::string, std::string> Settings(const Q1CalPt* point) {
  if (point == nullptr) return {};
  std::map<std::string, std::string> settings = {{"name", OnOneLine(TslCommon::ToUtf8(point->Name))},
                                                 {"m/z", fmt::format("{}", point->MZ)}};
  for (const auto& [id, value] : point->Fields) settings[NameOf(id)] = fmt::format("{}", value);
  return settings;
}

void AddQ1CalPts(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  for (const auto& [ofA, ofB, number] : PairRows(a.Q1CalPts, b.Q1CalPts)) {
    auto inA = Settings(ofA);
    auto inB = Settings(ofB);
    const std::string place = fmt::format("Q1CalPts {} (m/z {})", number, (ofA != nullptr ? ofA : ofB)->MZ);
    for (const auto& [name, value] : inB) inA.try_emplace(name, "-");
    for (const auto& [name, value] : inA) {
      const std::string other = inB.contains(name) ? inB[name] : "-";
      if (value != other) lines.push_back(Line(fmt::format("{} {}", place, name), value, other));
    }
  }
}

struct LensNumber {
  const char* name;
  double TslBL::IOPoint::*number;
};
constexpr LensNumber kLensNumbers[] = {{"Single", &TslBL::IOPoint::Single},
                                       {"Calibrated", &TslBL::IOPoint::Calibrated},
                                       {"Start", &TslBL::IOPoint::Start},
                                       {"End", &TslBL::IOPoint::End},
                                       {"StepSize", &TslBL::IOPoint::StepSize}};

// Numbers of a lens that are stored but not in use.
void AddStored(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  for (const TslBL::FieldRow& row : TslBL::kFieldTable) {
    if (row.Lens() == nullptr) continue;
    const TslBL::IOPoint& ofA = a.ControlData.*row.Lens();
    const TslBL::IOPoint& ofB = b.ControlData.*row.Lens();
    for (const auto& [name, number] : kLensNumbers) {
      const bool inUse = number == &TslBL::IOPoint::Single && ofA.Type == TslBL::IOPoint::SingleType &&
                         ofB.Type == TslBL::IOPoint::SingleType;
      if (!inUse && ofA.*number != ofB.*number)
        lines.push_back(Line(fmt::format("{}.{}", UserNameOf(a, row.id), name),
                             fmt::format("{}", ofA.*number), fmt::format("{}", ofB.*number)));
    }
  }
}

TslBL::FieldPlace PlaceOf(const UserField& field) { return TslBL::FindField(field.id)->place; }

// Whether either tune shows what stands at this place.
bool IsShown(const TslBL::FieldPlace& place, const Tune& a, const Tune& b) {
  return std::ranges::any_of(UserFieldGroups(), [&](const FieldGroup& group) {
    return std::ranges::any_of(group.fields, [&](const UserField& field) {
      return PlaceOf(field) == place && (HasField(a, field) || HasField(b, field));
    });
  });
}

// Settings that the other kind of probe has, and this one stores without using.
void AddOfOtherProbe(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  for (const FieldGroup& group : UserFieldGroups()) {
    for (const UserField& field : group.fields) {
      const auto ofA = TslBL::FieldValue(a, field.id);
      const auto ofB = TslBL::FieldValue(b, field.id);
      if (ofA && ofA != ofB && !IsShown(PlaceOf(field), a, b))
        lines.push_back(
            Line(fmt::format("{} (APCI)", field.name), fmt::format("{}", *ofA), fmt::format("{}", *ofB)));
    }
  }
}

}  // namespace

std::vector<std::string> TuneDifferences(const Tune& a, const Tune& b) {
  std::vector<std::string> lines;
  AddFields(a, b, lines);
  AddMZCalPts(a, b, lines);
  AddQ1CalPts(a, b, lines);
  AddStored(a, b, lines);
  AddOfOtherProbe(a, b, lines);
  if (lines.empty() && !(a == b))
    lines.emplace_back("the tunes differ in fields that this list does not show");
  return lines;
}

}  // namespace TslTool
