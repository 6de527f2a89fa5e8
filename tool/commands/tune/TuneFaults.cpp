#include <tool/commands/tune/TuneFaults.h>

#include <fmt/format.h>

#include <tool/commands/tune/FindUserField.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/LensCurve.h>
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

// A writer that is given what is there already changes nothing, and tells what is wrong
// with it.
void AddRefusals(const TslBL::Tune& tune, Collector& faults) {
  for (const FieldGroup& group : UserFieldGroups()) {
    for (const UserField& field : group.fields) {
      if (field.recheck == nullptr || !HasField(tune, field)) continue;
      DevTuneRules rules(tune);
      if (field.recheck(rules) != DevTuneRules::Error) continue;
      std::wstring text;
      rules.QLastError(text);
      faults.Add(field.name, text);
    }
  }
}

// Where two calibrants share one m/z the curve of a lens has no value.
void AddOpenCurves(const TslBL::Tune& tune, Collector& faults) {
  for (const TslBL::TuneField::Id id : TslBL::kSteppableFields) {
    const TslBL::LensCurve lens(tune, id);
    const auto open = lens.QCurve() != nullptr ? lens.QCurve()->QOpenMZ() : std::nullopt;
    const std::string name = UserNameOf(tune, id);
    if (open)
      faults.Add(name, TslCommon::FromUtf8(fmt::format("{} has two calibrants at m/z {}", name, *open)));
  }
}

}  // namespace

std::vector<std::string> TuneFaults(const TslBL::Tune& tune) {
  Collector faults;
  DevTuneRules rules(tune);
  for (const DevTuneRules::Fault& fault : rules.QFaults())
    faults.Add(UserNameOf(tune, fault.field), fault.text);
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
