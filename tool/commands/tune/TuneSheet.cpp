#include <tool/commands/tune/TuneSheet.h>

#include <fmt/format.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/LensCurves.h>
#include <tool/commands/tune/LimitsText.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneTiming.h>
#include <tool/commands/tune/UserFields.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/LensCurve.h>
#include <tslbl/tune/MassRange.h>
#include <algorithm>
#include <iterator>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Tune;

std::string LimitsOf(const DevTuneRules& rules, const UserField& field) {
  if (!field.valueNames().empty()) return "";
  return LimitsText(rules.QLimitsNow(field.id), TslBL::FindField(field.id)->traits.gap);
}

bool IsNumber(const std::string& text) {
  return text.find_first_not_of("-+.e0123456789") == std::string::npos;
}

std::string Ended(std::string row) {
  row.erase(row.find_last_not_of(' ') + 1);
  return row + '\n';
}

std::string FieldLine(const DevTuneRules& rules, const UserField& field) {
  const std::string value = field.show(rules);
  const std::string unit = value.empty() || !IsNumber(value) ? "" : UnitOf(field);
  return Ended(fmt::format("  {:<19} {:<26} {:>10} {:<6} {}", field.name, DisplayName(field), value, unit,
                           LimitsOf(rules, field)));
}

// A text for a user may be long: no columns behind it.
std::string TextLine(const DevTuneRules& rules, const UserField& field) {
  return Ended(fmt::format("  {:<19} {:<26} {}", field.name, DisplayName(field), field.show(rules)));
}

bool IsText(const UserField& field) {
  const TslBL::FieldRow& row = *TslBL::FindField(field.id);
  return row.place == TslBL::kNowhere && !row.limits.fixed;
}

std::string Fields(const Tune& tune) {
  const DevTuneRules rules(tune);
  std::string text;
  for (const FieldGroup& group : UserFieldGroups()) {
    text += fmt::format("{}\n", group.title);
    for (const UserField& field : group.fields)
      if (HasField(tune, field)) text += IsText(field) ? TextLine(rules, field) : FieldLine(rules, field);
    text += '\n';
  }
  return text;
}

std::string MZCalibration(const Tune& tune) {
  std::string text = fmt::format("m/z calibration\n  {:>10} {:>10}  {}\n", "m/z", "mass DAC", "name");
  for (const TslBL::MZCalPt& point : tune.MZCalPts)
    text += fmt::format("  {:>10} {:>10}  {}\n", point.MZ, point.MassDAC,
                        OnOneLine(TslCommon::ToUtf8(point.Name)));
  return text + '\n';
}

// The ends of the range and the calibrants within.
std::vector<double> Places(const Tune& tune) {
  const auto [low, high] = TslBL::QMassRange(tune);
  std::vector<double> places = {low, high};
  for (const TslBL::Q1CalPt& point : tune.Q1CalPts)
    if (low < point.MZ && point.MZ < high) places.push_back(point.MZ);
  std::ranges::sort(places);
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

std::string LensesOverMZ(const Tune& tune) {
  const std::vector<double> places = Places(tune);
  std::string text = fmt::format("Lenses over m/z\n  {:<14} {:<11}", "m/z", "");
  for (const double mz : places) text += fmt::format(" {:>9.6g}", mz);
  for (const LensField& field : LensFields()) {
    const bool isSingle = TslBL::LensCurve(tune, field.id).QCurve() == nullptr;
    text += fmt::format("\n  {:<14} {:<11}", fmt::format("{}, {}", field.name, field.unit),
                        isSingle ? "single" : "calibrated");
    const MZCurve curve = LensCurve(tune, field);
    for (const double mz : places) {
      const auto value = curve(mz);
      text += value ? fmt::format(" {:>9.6g}", *value) : fmt::format(" {:>9}", "-");
    }
  }
  return text + "\n\n";
}

std::string Q1Calibration(const Tune& tune) {
  std::string text = fmt::format("Q1 step calibration\n  {:>9}", "m/z");
  for (const LensField& field : LensFields()) text += fmt::format(" {:>12}", field.name);
  text += "  name";
  for (const TslBL::Q1CalPt& point : tune.Q1CalPts) {
    text += fmt::format("\n  {:>9.6g}", point.MZ);
    for (const LensField& field : LensFields()) {
      const auto entry = point.Fields.find(field.id);
      text += entry == point.Fields.end() ? fmt::format(" {:>12}", "-")
                                          : fmt::format(" {:>12.6g}", entry->second);
    }
    text += "  " + OnOneLine(TslCommon::ToUtf8(point.Name));
  }
  return text + "\n\n";
}

std::string Rules(const Tune& tune) {
  const std::vector<std::string> faults = TuneFaults(tune);
  if (faults.empty()) return "\nThe rules accept it.\n";
  std::string text = "\nThe rules do not accept it:\n";
  for (const std::string& fault : faults) text += "  " + fault + '\n';
  return text;
}

}  // namespace

std::string TuneSheet(const Tune& tune) {
  return Fields(tune) + MZCalibration(tune) + Q1Calibration(tune) + LensesOverMZ(tune) + TuneTiming(tune) +
         Rules(tune);
}

}  // namespace TslTool
