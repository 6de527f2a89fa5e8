#include <tool/commands/tune/TuneFaults.h>

#include <fmt/format.h>

#include <tool/commands/tune/FindUserField.h>
#include <tool/commands/tune/LensCurves.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <optional>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;

std::string OneLine(const std::wstring& text) {
  std::string line = TslCommon::ToUtf8(text);
  std::ranges::replace(line, '\n', ' ');
  return line;
}

class Collector {
 public:
  void Add(const std::string& field, const std::string& text) {
    texts_.push_back(text);
    lines_.push_back(fmt::format("{}: {}", field, text));
  }
  // The same text under another name is the same fault.
  void AddIfNew(const std::string& field, const std::string& text) {
    if (std::ranges::find(texts_, text) == texts_.end()) Add(field, text);
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
      faults.AddIfNew(field.name, OneLine(rules.QLastError()));
    }
  }
}

// Where two calibrants share one m/z the curve of a lens has no value.
void AddOpenCurves(const TslBL::Tune& tune, Collector& faults) {
  for (const LensField& lens : LensFields()) {
    const auto points = LensPoints(tune, lens);
    std::optional<double> told;
    for (std::size_t i = 1; i < points.size(); ++i) {
      const double mz = points[i].first;
      if (mz != points[i - 1].first || mz == told) continue;
      faults.Add(lens.name, fmt::format("{} has two calibrants at m/z {}", lens.name, mz));
      told = mz;
    }
  }
}

// A tune may be without a syringe.
void AddSyringe(const TslBL::Tune& tune, Collector& faults) {
  if (tune.SyringeData == TslBL::Syringe()) return;
  const DevTuneRules rules(tune);
  const auto check = [&](const char* field, const TslBL::Syringe& syringe) {
    if (rules.CheckSyringe(syringe) == DevTuneRules::Error) faults.Add(field, OneLine(rules.QLastError()));
  };
  TslBL::Syringe flow = tune.SyringeData;
  double ignored = 0.0;
  DevTuneRules::QLimitsSyringe(TslBL::TuneField::Diameter, flow.Model.Diameter, ignored);
  TslBL::Syringe diameter = tune.SyringeData;
  diameter.FlowRate = 0;
  check("Diameter", diameter);
  check("FlowRate", flow);
}

}  // namespace

std::vector<std::string> TuneFaults(const TslBL::Tune& tune) {
  Collector faults;
  DevTuneRules rules(tune);
  for (const DevTuneRules::Fault& fault : rules.QFaults())
    faults.Add(UserNameOf(tune, fault.field), OneLine(fault.text));
  AddRefusals(tune, faults);
  AddOpenCurves(tune, faults);
  AddSyringe(tune, faults);
  return std::move(faults).Lines();
}

}  // namespace TslTool
