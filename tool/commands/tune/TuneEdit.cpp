#include <tool/commands/tune/TuneEdit.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/FindUserField.h>
#include <tool/commands/tune/LensCurves.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>

namespace TslTool {
namespace {

using TslBL::AppliesTo;
using TslBL::DevTuneRules;
using TslBL::Tune;
using ErrTypes = DevTuneRules::ErrTypes;

const LensField& FindLens(const std::string& name) {
  const auto found =
      std::ranges::find_if(LensFields(), [&](const LensField& f) { return SameText(f.name, name); });
  if (found == LensFields().end()) throw UsageError("\"" + name + "\" is no lens that can follow m/z");
  return *found;
}

}  // namespace

TuneEdit::TuneEdit(const Tune& tune, const std::string& text) : text_(text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos || equals == 0) throw UsageError("\"" + text + "\" is not FIELD=VALUE");
  name_ = text.substr(0, equals);
  value_ = text.substr(equals + 1);
  if (const auto at = name_.find('@'); at != std::string::npos) {
    field_ = FindUserField(tune, FindLens(name_.substr(0, at)).id);
    mz_ = ParseReal(name_, name_.substr(at + 1));
  } else {
    field_ = &FindUserField(tune, name_);
  }
}

// A setting that another kind of probe keeps in its place must not be changed by mistake.
std::string TuneEdit::Refusal(const DevTuneRules& rules) const {
  const bool isOfProbe = field_->appliesTo == AppliesTo::Esi || field_->appliesTo == AppliesTo::Apci;
  if (!isOfProbe || HasField(rules, *field_)) return "";
  return fmt::format("the tune is for a probe of kind {}, which has no such field",
                     TslCommon::ToUtf8(TslBL::Probes::GetNameNoId(rules.QIonSourceType())));
}

ErrTypes TuneEdit::Write(DevTuneRules& rules) const {
  if (!mz_) {
    if (field_->set == nullptr) throw UsageError(fmt::format("{} cannot be set", field_->name));
    return field_->set(rules, field_->name, value_);
  }
  if (SameText(value_, "none")) return rules.RemoveQ1CalPtField(*mz_, field_->id);
  return rules.WQ1CalPtField(*mz_, field_->id, ParseReal(name_, value_));
}

EditResult TuneEdit::Apply(DevTuneRules& rules) const {
  if (const std::string reason = Refusal(rules); !reason.empty()) return {true, reason};
  const ErrTypes result = Write(rules);
  if (result == DevTuneRules::NoError) return {false, ""};
  return {result == DevTuneRules::Error, TslCommon::ToUtf8(rules.QLastError())};
}

std::string TuneEdit::Shown(const DevTuneRules& rules) const {
  if (!mz_) return field_->show(rules);
  return fmt::format("{}", LensPoints(rules, FindLens(field_->name)));
}

std::string CombinedForms() {
  std::vector<std::string> forms;
  for (const UserField& field : CombinedFields())
    forms.push_back(fmt::format("{}={}", field.name, field.valueNames()));
  return fmt::format("{}", fmt::join(forms, " "));
}

}  // namespace TslTool
