#include <tool/commands/tune/TuneEdit.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/LensCurves.h>
#include <tool/commands/tune/TuneFields.h>
#include <tool/frame/CommandLine.h>
#include <tool/frame/Numbers.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <iterator>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using ErrTypes = DevTuneRules::ErrTypes;

const LensField& FindLens(const std::string& name) {
  const auto found =
      std::ranges::find_if(LensFields(), [&](const LensField& f) { return SameText(f.name, name); });
  if (found == LensFields().end()) throw UsageError("\"" + name + "\" is no lens that can follow m/z");
  return *found;
}

// "LENS@MZ".
ErrTypes SetAtCalibrant(DevTuneRules& rules, const std::string& name, const std::string& text) {
  const auto at = name.find('@');
  const LensField& lens = FindLens(name.substr(0, at));
  const double mz = ParseReal(name, name.substr(at + 1));
  if (SameText(text, "none")) return rules.RemoveQ1CalPtField(mz, lens.id);
  return rules.WQ1CalPtField(mz, lens.id, ParseReal(name, text));
}

// One after the other a tune would pass through ranges that nobody wants.
ErrTypes SetRange(DevTuneRules& rules, const std::string& name, const std::string& text) {
  const RealRange range = ParseRealRange(name, text);
  std::wstring former;
  rules.QLastError(former);
  const ErrTypes high = rules.WMZRange(range.from, range.to);
  // The writer tells of a bad low end by its text alone.
  return rules.QMZLow() == range.from ? high : DevTuneRules::Error;
}

// The rules take any other number for 10, which nobody who types one means.
ErrTypes SetSamplesPerMass(DevTuneRules& rules, const std::string& name, const std::string& text) {
  constexpr double kOffered[] = {20, 10, 6, 5, 4};
  const double samples = ParseReal(name, text);
  if (std::ranges::find(kOffered, samples) == std::end(kOffered))
    throw UsageError(name + ": \"" + text + "\" is not one of 20, 10, 6, 5, 4");
  return rules.WSamplesPerMass(samples);
}

ErrTypes SetField(DevTuneRules& rules, const std::string& name, const std::string& text) {
  if (name.find('@') != std::string::npos) return SetAtCalibrant(rules, name, text);
  if (SameText(name, "MZRange")) return SetRange(rules, name, text);
  if (SameText(name, "SamplesPerMass")) return SetSamplesPerMass(rules, name, text);
  const TuneField& field = FindTuneField(rules, name);
  if (field.set == nullptr) throw UsageError(fmt::format("{} cannot be set", field.name));
  return field.set(rules, field.name, text);
}

// A setting that another kind of probe keeps in its place must not be changed by mistake.
std::string WrongProbe(const DevTuneRules& rules, const std::string& name) {
  if (name.find('@') != std::string::npos || SameText(name, "MZRange") || SameText(name, "SamplesPerMass"))
    return "";
  const TuneField& field = FindTuneField(rules, name);
  const bool isOfProbe = field.of == FieldOf::Esi || field.of == FieldOf::Apci;
  if (!isOfProbe || HasField(rules, field)) return "";
  return fmt::format("the tune is for a probe of kind {}, which has no such field",
                     TslCommon::ToUtf8(TslBL::Probes::GetNameNoId(rules.QIonSourceType())));
}

}  // namespace

std::string ShownOf(const DevTuneRules& rules, const std::string& edit) {
  const std::string name = edit.substr(0, edit.find('='));
  if (const auto at = name.find('@'); at != std::string::npos) {
    const auto points = LensPoints(rules, FindLens(name.substr(0, at)));
    return fmt::format("{}", points);
  }
  if (SameText(name, "MZRange")) return fmt::format("{}-{}", rules.QMZLow(), rules.QMZHi());
  if (SameText(name, "SamplesPerMass")) return fmt::format("{}", rules.QSamplesPerMass());
  return FindTuneField(rules, name).show(rules);
}

EditResult Edit(DevTuneRules& rules, const std::string& edit) {
  const auto equals = edit.find('=');
  if (equals == std::string::npos || equals == 0) throw UsageError("\"" + edit + "\" is not FIELD=VALUE");
  const std::string name = edit.substr(0, equals);
  if (const std::string reason = WrongProbe(rules, name); !reason.empty()) return {true, reason};
  const ErrTypes result = SetField(rules, name, edit.substr(equals + 1));
  if (result == DevTuneRules::NoError) return {false, ""};
  std::wstring text;
  rules.QLastError(text);
  return {result == DevTuneRules::Error, TslCommon::ToUtf8(text)};
}

}  // namespace TslTool
