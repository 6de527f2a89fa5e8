#include <tool/commands/ramp/RampSteps.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/ramp/RampError.h>
#include <tool/commands/tune/FindUserField.h>
#include <tool/frame/UsageError.h>
#include <tslbl/tune/ramp/RampMethod.h>
#include <algorithm>
#include <set>

namespace TslTool {
namespace {

using Field = TslBL::TuneField;

const TslBL::Tune& FirstOf(const Tunes& tunes) { return tunes.begin()->second; }

std::set<double> ValuesOf(const Tunes& tunes, Field::Id field) {
  std::set<double> values;
  for (const auto& [id, tune] : tunes) values.insert(TslBL::QRampLensValue(tune, field));
  return values;
}

std::vector<Field::Id> DifferingLenses(const Tunes& tunes) {
  std::vector<Field::Id> lenses;
  for (const TslBL::FieldRow& row : TslBL::kFieldTable)
    if (row.IsRampable() && FindUserField(FirstOf(tunes), row.id) != nullptr &&
        ValuesOf(tunes, row.id).size() > 1)
      lenses.push_back(row.id);
  return lenses;
}

std::string NamesOf(const Tunes& tunes, const std::vector<Field::Id>& lenses) {
  std::vector<std::string> names;
  names.reserve(lenses.size());
  for (const Field::Id lens : lenses) names.push_back(LensName(FirstOf(tunes), lens));
  return fmt::format("{}", fmt::join(names, ", "));
}

std::vector<Field::Id> NamedLenses(const Tunes& tunes, const std::vector<std::string>& names) {
  if (names.size() > 2) throw UsageError("--lens: a ramp walks one lens or two");
  std::vector<Field::Id> lenses;
  for (const std::string& name : names) {
    const Field::Id field = FindUserField(FirstOf(tunes), name).id;
    if (!Field::IsFieldRampable(field)) throw UsageError("--lens: no ramp can walk " + name);
    if (std::ranges::count(lenses, field) > 0) throw UsageError("--lens: " + name + " is given twice");
    const std::set<double> values = ValuesOf(tunes, field);
    if (values.size() == 1)
      throw RampError(fmt::format("{} is {} in all tunes of the run, which makes no ramp of it",
                                  LensName(FirstOf(tunes), field), *values.begin()));
    lenses.push_back(field);
  }
  return lenses;
}

// One that follows m/z has no value that a step could be told by.
void RequireSingle(const Tunes& tunes, Field::Id field) {
  const auto lens = TslBL::FindField(field)->Lens();
  if (lens == nullptr) return;
  for (const auto& [id, tune] : tunes)
    if ((tune.ControlData.*lens).Type != TslBL::IOPoint::SingleType)
      throw RampError(
          fmt::format("tune {}: {} follows m/z, and a ramp has single values", id, LensName(tune, field)));
}

std::vector<Field::Id> LensesOf(const Tunes& tunes, const std::vector<std::string>& names,
                                const std::vector<Field::Id>& differing) {
  if (!names.empty()) return NamedLenses(tunes, names);
  if (tunes.size() == 1) throw RampError("the run has one tune, and a ramp has one for each value");
  if (differing.empty()) throw RampError("the tunes of the run differ in no lens that a ramp walks");
  if (differing.size() > 2)
    throw RampError(fmt::format("the tunes of the run differ in {}; --lens names one or two of them",
                                NamesOf(tunes, differing)));
  return differing;
}

}  // namespace

bool RampSteps::IsAtEnd(std::size_t step, std::size_t lens) const {
  const auto of = [lens](const std::vector<double>& all) { return all[lens]; };
  const auto [lowest, highest] = std::ranges::minmax(values, {}, of);
  return values[step][lens] == lowest[lens] || values[step][lens] == highest[lens];
}

RampSteps FindRampSteps(const Tunes& tunes, const std::vector<std::string>& names) {
  if (tunes.empty()) throw RampError("the run has no tune");
  const std::vector<Field::Id> differing = DifferingLenses(tunes);
  RampSteps steps;
  steps.lenses = LensesOf(tunes, names, differing);
  for (const Field::Id field : steps.lenses) RequireSingle(tunes, field);
  for (const Field::Id field : differing)
    if (std::ranges::count(steps.lenses, field) == 0) steps.beside.push_back(LensName(FirstOf(tunes), field));
  for (const auto& [id, tune] : tunes) {
    std::vector<double> values;
    values.reserve(steps.lenses.size());
    for (const Field::Id field : steps.lenses) values.push_back(TslBL::QRampLensValue(tune, field));
    const auto known = std::ranges::find(steps.values, values);
    steps.ofTune[id] = static_cast<std::size_t>(known - steps.values.begin());
    if (known == steps.values.end()) steps.values.push_back(values);
  }
  return steps;
}

std::string LensName(const TslBL::Tune& tune, Field::Id field) { return UserNameOf(tune, field); }

std::string LensTitle(const TslBL::Tune& tune, Field::Id field) {
  const std::string unit = UnitOf(*FindUserField(tune, field));
  return LensName(tune, field) + (unit.empty() ? "" : ", " + unit);
}

}  // namespace TslTool
