#include <tool/commands/tune/FieldEdit.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/FindUserField.h>
#include <tool/commands/tune/UserFields.h>
#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/Settling.h>
#include <stdexcept>
#include <vector>

namespace TslTool {
namespace {

using TslBL::AppliesTo;
using TslBL::Control;
using TslBL::DevTuneRules;
using TslBL::Tune;

// The writers of these take them for the fields that the other acquisition function has in
// their place.
std::string RefusalOfFunction(const Tune& tune, const UserField& field) {
  const bool isSim = tune.ControlData.Type == Control::Sim;
  if (SameText(field.name, "MZ") && !isSim)
    return "the tune is a scan, which has no such field; MZLow, MZHi or MZRange set what it covers";
  if (SameText(field.name, "MZRange") && isSim)
    return "the tune is a SIM, which has no range; MZ sets its m/z and SimWithSpan its span";
  return "";
}

// A setting that another kind of tune keeps in its place must not be changed by mistake.
std::string Refusal(const DevTuneRules& rules, const UserField& field) {
  const bool isOfProbe = field.appliesTo == AppliesTo::Esi || field.appliesTo == AppliesTo::Apci;
  if (!isOfProbe || HasField(rules, field)) return RefusalOfFunction(rules, field);
  return fmt::format("the tune is for a probe of kind {}, which has no such field",
                     TslCommon::ToUtf8(TslBL::Probes::GetNameNoId(rules.QIonSourceType())));
}

class FieldEdit : public TuneEdit {
 public:
  FieldEdit(const UserField& field, std::string value) : field_(field), value_(std::move(value)) {}

  EditResult Apply(DevTuneRules& rules) const override {
    if (const std::string reason = Refusal(rules, field_); !reason.empty()) return {true, reason};
    if (field_.set == nullptr) throw UsageError(fmt::format("{} cannot be set", field_.name));
    const DevTuneRules::ErrTypes result = field_.set(rules, field_.name, value_);
    if (result == DevTuneRules::NoError) return {false, ""};
    std::string text = TslCommon::ToUtf8(rules.QLastError());
    if (field_.id == TslBL::TuneField::Model) text += " 'tslbl tune syringes' lists them.";
    return {result == DevTuneRules::Error, text};
  }

  std::string Shown(const DevTuneRules& rules) const override { return field_.show(rules); }

 private:
  const UserField& field_;
  std::string value_;
};

// What the m/z range and the capillary exit need.
class SettlingEdit : public TuneEdit {
 public:
  bool IsLast() const override { return true; }

  EditResult Apply(DevTuneRules& rules) const override {
    std::uint32_t needed = 0;
    try {
      needed = TslBL::SettlingDelay(rules);
    } catch (const std::runtime_error& e) {
      return {true, fmt::format("the capillary exit has no value at an end of the range: {}", e.what())};
    }
    if (rules.WInitSettleDelay(needed) != DevTuneRules::Error) return {false, ""};
    return {true, fmt::format("the tune needs {} us: {}", needed, TslCommon::ToUtf8(rules.QLastError()))};
  }

  std::string Shown(const DevTuneRules& rules) const override {
    return TslTool::Shown(rules.QInitSettleDelay());
  }
};

}  // namespace

std::unique_ptr<TuneEdit> MakeFieldEdit(const Tune& tune, const std::string& name, const std::string& value) {
  const UserField& field = FindUserField(tune, name);
  if (field.id == TslBL::TuneField::InitSettleDelay && SameText(value, "auto"))
    return std::make_unique<SettlingEdit>();
  return std::make_unique<FieldEdit>(field, value);
}

std::string CombinedForms() {
  std::vector<std::string> forms;
  for (const UserField& field : CombinedFields())
    forms.push_back(fmt::format("{}={}", field.name, field.valueNames()));
  return fmt::format("{}", fmt::join(forms, " "));
}

}  // namespace TslTool
