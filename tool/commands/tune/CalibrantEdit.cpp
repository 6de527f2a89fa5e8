#include <tool/commands/tune/CalibrantEdit.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/LensCurves.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/FieldTable.h>
#include <algorithm>
#include <vector>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Q1CalPt;
using TslBL::Tune;
using ErrTypes = DevTuneRules::ErrTypes;

// Null if the tune has none there.
const Q1CalPt* FindCalibrant(const Tune& tune, double mz) {
  const auto found =
      std::ranges::find_if(tune.Q1CalPts, [mz](const Q1CalPt& point) { return IsSameMZ(point.MZ, mz); });
  return found == tune.Q1CalPts.end() ? nullptr : &*found;
}

// For a message that asks for another one.
std::string Calibrants(const Tune& tune) {
  if (tune.Q1CalPts.empty()) return "there are none";
  std::vector<std::string> shown;
  for (const Q1CalPt& point : tune.Q1CalPts)
    shown.push_back(fmt::format("{} ({})", point.MZ, OnOneLine(TslCommon::ToUtf8(point.Name))));
  return fmt::format("there are {}", fmt::join(shown, ", "));
}

EditResult ResultOf(ErrTypes result, const DevTuneRules& rules) {
  if (result == DevTuneRules::NoError) return {false, ""};
  return {true, TslCommon::ToUtf8(rules.QLastError())};
}

// For a change that needs the calibrant of an m/z.
EditResult NeedCalibrant(ErrTypes result, const DevTuneRules& rules, double mz) {
  EditResult told = ResultOf(result, rules);
  if (told.refused && FindCalibrant(rules, mz) == nullptr)
    told.text += fmt::format(" By m/z, {}; Calibrant@{}=NAME adds one.", Calibrants(rules), mz);
  return told;
}

class CalibrantEdit : public RowEdit {
 public:
  explicit CalibrantEdit(const RowWords& words) : RowEdit(CalTable::Calibrants, words) {
    to_ = words.MovesTo();
    if (words.value.empty()) throw UsageError(words.name + ": the name is empty");
    Parse(words.name, words.value, name_);
  }

  EditResult Apply(DevTuneRules& rules) const override {
    if (to_) return Move(rules);
    if (words_.IsNone()) return NeedCalibrant(rules.DelQ1CalPt(words_.mz), rules, words_.mz);
    const bool isThere = FindCalibrant(rules, words_.mz) != nullptr;
    return ResultOf(isThere ? rules.WQ1CalPtName(words_.mz, name_) : rules.AddQ1CalPt(words_.mz, name_),
                    rules);
  }

  std::string Shown(const DevTuneRules& rules) const override {
    const Q1CalPt* point = FindCalibrant(rules, words_.mz);
    if (point == nullptr) return "none";
    return to_ ? fmt::format("m/z {}", point->MZ) : OnOneLine(TslCommon::ToUtf8(point->Name));
  }

 private:
  EditResult Move(DevTuneRules& rules) const {
    EditResult told = NeedCalibrant(rules.ChangeQ1CalPtMZ(words_.mz, *to_), rules, words_.mz);
    const Q1CalPt* from = FindCalibrant(rules, words_.mz);
    const Q1CalPt* other = FindCalibrant(rules, *to_);
    if (told.refused && from != nullptr && other != nullptr)
      told.text += fmt::format(" At m/z {} stands {}.", other->MZ, OnOneLine(TslCommon::ToUtf8(other->Name)));
    return told;
  }

  std::wstring name_;
};

const LensField& FindLens(const std::string& name) {
  const auto found =
      std::ranges::find_if(LensFields(), [&](const LensField& f) { return SameText(f.name, name); });
  if (found == LensFields().end()) throw UsageError("\"" + name + "\" is no lens that can follow m/z");
  return *found;
}

class LensEdit : public RowEdit {
 public:
  LensEdit(const LensField& lens, const RowWords& words) : RowEdit(CalTable::Calibrants, words), lens_(lens) {
    if (!words.IsNone()) value_ = ParseReal(words.name, words.value);
  }

  EditResult Apply(DevTuneRules& rules) const override {
    return NeedCalibrant(value_ ? rules.WQ1CalPtField(words_.mz, lens_.id, *value_)
                                : rules.RemoveQ1CalPtField(words_.mz, lens_.id),
                         rules, words_.mz);
  }

  // Whether or not the lens follows its curve.
  std::string Shown(const DevTuneRules& rules) const override {
    const Q1CalPt* point = FindCalibrant(rules, words_.mz);
    if (point == nullptr) return "none";
    const auto entry = point->Fields.find(lens_.id);
    return entry == point->Fields.end() ? "none" : TslTool::Shown(entry->second);
  }

  std::string Idle(const DevTuneRules& rules) const override {
    const TslBL::IOPoint& lens = rules.ControlData.*TslBL::FindField(lens_.id)->Lens();
    if (!value_ || lens.Type != TslBL::IOPoint::SingleType) return "";
    return fmt::format("{} stands at {} for every m/z; {}=calibrated lets it follow the calibrants",
                       lens_.name, TslTool::Shown(lens.Single), lens_.name);
  }

 private:
  const LensField& lens_;
  std::optional<double> value_;
};

}  // namespace

std::unique_ptr<TuneEdit> MakeCalibrantEdit(const RowWords& words) {
  return std::make_unique<CalibrantEdit>(words);
}

std::unique_ptr<TuneEdit> MakeLensEdit(const std::string& lens, const RowWords& words) {
  return std::make_unique<LensEdit>(FindLens(lens), words);
}

}  // namespace TslTool
