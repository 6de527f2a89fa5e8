#include <tool/commands/tune/TuneFaults.h>

#include <fmt/format.h>

#include <tool/commands/tune/LensCurves.h>
#include <tool/commands/tune/TuneFields.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;

class Collector {
 public:
  void Add(const std::string& field, const std::wstring& text) {
    std::string shown = TslCommon::ToUtf8(text);
    std::ranges::replace(shown, '\n', ' ');
    // The same text under another name is the same fault.
    if (std::ranges::find(texts_, shown) != texts_.end()) return;
    texts_.push_back(shown);
    lines_.push_back(fmt::format("{}: {}", field, shown));
  }
  std::vector<std::string> Lines() && { return std::move(lines_); }

 private:
  std::vector<std::string> texts_;
  std::vector<std::string> lines_;
};

std::string NameOf(const TslBL::Tune& tune, TslBL::TuneField::Id id) {
  for (const FieldGroup& group : TuneFieldGroups())
    for (const TuneField& field : group.fields)
      if (field.id == id && HasField(tune, field)) return field.name;
  return id == TslBL::TuneField::MZCalPts ? "MZCalPts" : "Q1CalPts";
}

// A writer that is given what is there already changes nothing, and tells what is wrong
// with it.
void AddRefusals(const TslBL::Tune& tune, Collector& faults) {
  for (const FieldGroup& group : TuneFieldGroups()) {
    for (const TuneField& field : group.fields) {
      if (field.keep == nullptr || !HasField(tune, field)) continue;
      DevTuneRules rules(tune);
      if (field.keep(rules) != DevTuneRules::Error) continue;
      std::wstring text;
      rules.QLastError(text);
      faults.Add(field.name, text);
    }
  }
}

// Where two calibrants share one m/z the curve of a lens has no value.
void AddOpenCurves(const TslBL::Tune& tune, Collector& faults) {
  for (const LensField& lens : LensFields()) {
    const auto points = LensPoints(tune, lens);
    const auto twin = std::ranges::adjacent_find(points, {}, [](const auto& point) { return point.first; });
    if (twin != points.end())
      faults.Add(lens.name,
                 TslCommon::FromUtf8(fmt::format("{} has two calibrants at m/z {}", lens.name, twin->first)));
  }
}

}  // namespace

std::vector<std::string> TuneFaults(const TslBL::Tune& tune) {
  Collector faults;
  DevTuneRules rules(tune);
  for (const DevTuneRules::Fault& fault : rules.QFaults()) faults.Add(NameOf(tune, fault.field), fault.text);
  AddRefusals(tune, faults);
  AddOpenCurves(tune, faults);
  if (!(tune.SyringeData == TslBL::Syringe()) &&
      rules.CheckSyringe(tune.SyringeData) == DevTuneRules::Error) {
    std::wstring text;
    rules.QLastError(text);
    faults.Add("Diameter", text);
  }
  return std::move(faults).Lines();
}

}  // namespace TslTool
