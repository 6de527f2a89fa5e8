#include <tool/commands/tune/TuneSheet.h>

#include <fmt/format.h>

#include <tool/commands/tune/LensCurves.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneFields.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/MassRange.h>
#include <algorithm>
#include <functional>
#include <iterator>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Tune;

// The sign that the rules leave to the voltages of an APCI source.
void CutToSign(const Tune& tune, TslBL::TuneField::Id id, TslBL::Limits& limits) {
  using Id = TslBL::TuneField::Id;
  const bool attracts = id == Id::EndPlate || id == Id::CapEnter;
  if (tune.Source.Type != TslBL::Probes::APCI || (!attracts && id != Id::CoronaVoltage)) return;
  const bool positive = tune.ControlData.PolarityType == TslBL::PolarityPositive;
  (positive == attracts ? limits.Max : limits.Min) = 0.0;
}

std::string Limits(const Tune& tune, const TuneField& field) {
  if (!ValueNames(field).empty()) return "";
  TslBL::Limits limits = TslBL::FieldLimits().QLimits(tune.Source.Type, static_cast<int>(field.id));
  const bool isSyringe = field.id == TslBL::TuneField::Diameter || field.id == TslBL::TuneField::FlowRate;
  if (isSyringe) DevTuneRules::QLimitsSyringe(field.id, limits.Min, limits.Max);
  if (limits == TslBL::Limits{}) return "";
  CutToSign(tune, field.id, limits);
  const std::string ends = fmt::format("{} to {}", limits.Min, limits.Max);
  return isSyringe ? ends : fmt::format("{} by {}", ends, limits.Step);
}

bool IsNumber(const std::string& text) {
  return text.find_first_not_of("-+.e0123456789") == std::string::npos;
}

std::string Ended(std::string row) {
  row.erase(row.find_last_not_of(' ') + 1);
  return row + '\n';
}

std::string FieldRow(const DevTuneRules& rules, const TuneField& field) {
  const std::string value = field.show(rules);
  const char* unit = value.empty() || !IsNumber(value) ? "" : field.unit;
  return Ended(fmt::format("  {:<19} {:<26} {:>10} {:<6} {}", field.name, DisplayName(field), value, unit,
                           Limits(rules, field)));
}

// A text for a user may be long: no columns behind it.
std::string TextRow(const DevTuneRules& rules, const TuneField& field) {
  return Ended(fmt::format("  {:<19} {:<26} {}", field.name, DisplayName(field), field.show(rules)));
}

bool IsText(const TuneField& field) {
  using Id = TslBL::TuneField::Id;
  return field.id == Id::Name || field.id == Id::Comment || field.id == Id::LastSave || field.id == Id::Model;
}

std::string Fields(const Tune& tune) {
  const DevTuneRules rules(tune);
  std::string text;
  for (const FieldGroup& group : TuneFieldGroups()) {
    text += fmt::format("{}\n", group.title);
    for (const TuneField& field : group.fields)
      if (HasField(tune, field)) text += IsText(field) ? TextRow(rules, field) : FieldRow(rules, field);
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
    const bool isSingle = (tune.ControlData.*field.lens).Type == TslBL::IOPoint::SingleType;
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

std::string TimingRow(const char* label, const std::function<std::string()>& value) {
  std::string shown;
  try {
    shown = value();
  } catch (const std::runtime_error& e) {
    shown = fmt::format("cannot be told: {}", e.what());
  }
  return fmt::format("  {:<19} {}\n", label, shown);
}

// The instrument counts microseconds in 32 bits.
std::string Duration(const Tune& tune) {
  const TslBL::Control& c = tune.ControlData;
  const double pulses = DevTuneRules::QNumPulses(tune);
  const double exact =
      ((pulses - 1.0) * c.StepSettleDelay + pulses * c.PulseCountDelay + c.InitSettleDelay) * c.ScansPerSpec;
  const double counted = DevTuneRules::QDuration(tune);
  const std::string text = fmt::format("{} ms", exact / 1000.0);
  return exact == counted ? text
                          : fmt::format("{}, which the instrument counts as {} ms", text, counted / 1000.0);
}

std::string Timing(const Tune& tune) {
  const auto needed = SettlingCurve(tune)(TslBL::QMassRange(tune).second);
  return "Timing\n" +
         TimingRow("steps of a scan", [&] { return fmt::format("{}", DevTuneRules::QNumPulses(tune)); }) +
         TimingRow("a spectrum", [&] { return Duration(tune); }) +
         TimingRow("scan speed", [&] { return fmt::format("{} m/z per s", tune.QScanSpeed()); }) +
         TimingRow("settling needed",
                   [&] { return needed ? fmt::format("{} us", *needed) : std::string("cannot be told"); });
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
  return Fields(tune) + MZCalibration(tune) + Q1Calibration(tune) + LensesOverMZ(tune) + Timing(tune) +
         Rules(tune);
}

}  // namespace TslTool
