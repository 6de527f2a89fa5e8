#include <tool/commands/tune/MZCalEdit.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <vector>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::MZCalPt;
using TslBL::TuneField;
using Points = std::vector<MZCalPt>;

auto Find(auto& points, double mz) {
  return std::ranges::find_if(points, [mz](const MZCalPt& point) { return IsSameMZ(point.MZ, mz); });
}

EditResult Checked(const DevTuneRules& rules, TuneField::Id field, double value) {
  if (rules.CheckLimits(field, value) == DevTuneRules::NoError) return {false, ""};
  return {true, TslCommon::ToUtf8(rules.QLastError())};
}

EditResult NotFound(const DevTuneRules& rules) {
  return {true, "there is no such calibration point; " + ShownMZCalPts(rules)};
}

class MZCalEdit : public RowEdit {
 public:
  explicit MZCalEdit(const RowWords& words) : RowEdit(CalTable::MZCalPts, words) {
    to_ = words.MovesTo();
    if (!to_ && !words.IsNone()) dac_ = ParseReal(words.name, words.value);
  }

  EditResult Apply(DevTuneRules& rules) const override {
    if (dac_) return WriteDAC(rules);
    Points& points = rules.MZCalPts;
    const auto point = Find(points, words_.mz);
    if (point == points.end()) return NotFound(rules);
    if (to_) return Move(rules, *point);
    points.erase(point);
    return {false, ""};
  }

  std::string Shown(const DevTuneRules& rules) const override {
    const auto point = Find(rules.MZCalPts, words_.mz);
    if (point == rules.MZCalPts.end()) return "none";
    return to_ ? fmt::format("m/z {}", point->MZ) : TslTool::Shown(point->MassDAC);
  }

 private:
  EditResult WriteDAC(DevTuneRules& rules) const {
    if (EditResult told = Checked(rules, TuneField::MassDAC, *dac_); told.refused) return told;
    if (const auto point = Find(rules.MZCalPts, words_.mz); point != rules.MZCalPts.end()) {
      point->MassDAC = *dac_;
      return {false, ""};
    }
    EditResult told = Checked(rules, TuneField::MZ, words_.mz);
    if (!told.refused)
      rules.MZCalPts.emplace_back(TslCommon::FromUtf8(fmt::format("MZ {:.2f}", words_.mz)), words_.mz, *dac_);
    return told;
  }

  EditResult Move(DevTuneRules& rules, MZCalPt& point) const {
    const auto other = Find(rules.MZCalPts, *to_);
    if (other != rules.MZCalPts.end() && &*other != &point)
      return {true, fmt::format("there is a calibration point at m/z {}", other->MZ)};
    EditResult told = Checked(rules, TuneField::MZ, *to_);
    if (!told.refused) point.MZ = *to_;
    return told;
  }

  std::optional<double> dac_;
};

class MZCalNameEdit : public RowEdit {
 public:
  explicit MZCalNameEdit(const RowWords& words) : RowEdit(CalTable::MZCalPts, words) {
    Parse(words.name, words.value, name_);
  }

  EditResult Apply(DevTuneRules& rules) const override {
    const auto point = Find(rules.MZCalPts, words_.mz);
    if (point == rules.MZCalPts.end()) return NotFound(rules);
    point->Name = name_;
    return {false, ""};
  }

  std::string Shown(const DevTuneRules& rules) const override {
    const auto point = Find(rules.MZCalPts, words_.mz);
    return point == rules.MZCalPts.end() ? "none" : TslTool::Shown(point->Name);
  }

 private:
  std::wstring name_;
};

}  // namespace

std::unique_ptr<TuneEdit> MakeMZCalEdit(const RowWords& words) { return std::make_unique<MZCalEdit>(words); }
std::unique_ptr<TuneEdit> MakeMZCalNameEdit(const RowWords& words) {
  return std::make_unique<MZCalNameEdit>(words);
}

std::string ShownMZCalPts(const TslBL::Tune& tune) {
  if (tune.MZCalPts.empty()) return "there are none";
  Points points = tune.MZCalPts;
  std::ranges::stable_sort(points, {}, &MZCalPt::MZ);
  std::vector<std::string> shown;
  for (const MZCalPt& point : points) shown.push_back(fmt::format("m/z {} DAC {}", point.MZ, point.MassDAC));
  return fmt::format("there are {}", fmt::join(shown, ", "));
}

}  // namespace TslTool
