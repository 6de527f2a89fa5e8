#include <tool/commands/tune/TuneFields.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/frame/CommandLine.h>
#include <tool/frame/Numbers.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/Truncate.h>
#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

using TslBL::Control;
using TslBL::DevTuneRules;
using TslBL::IOPoint;
using TslBL::Probes;
using TslBL::Tune;
using Id = TslBL::TuneField::Id;
using ErrTypes = DevTuneRules::ErrTypes;

// The names of the values of an enumeration; the index is the value.
template <class E>
constexpr std::nullptr_t kNames = nullptr;
template <>
constexpr std::string_view kNames<Probes::ProbeTypes>[] = {"ESI", "APCI", "low-flow ESI"};
template <>
constexpr std::string_view kNames<TslBL::PolarityTypes>[] = {"positive", "negative"};
template <>
constexpr std::string_view kNames<TslBL::IonSource::TempLevels>[] = {"off", "low", "medium", "high"};
template <>
constexpr std::string_view kNames<Control::Types>[] = {"scan", "SIM"};
template <>
constexpr std::string_view kNames<Control::Q1MZTypes>[] = {"RF/DC", "RF only"};
template <>
constexpr std::string_view kNames<Control::SimWithSpanTypes>[] = {"none", "0.2", "0.4", "0.6", "0.8", "1",
                                                                  "1.2",  "1.4", "1.6", "1.8", "2"};

// A polarity that was switched leaves zeros with a sign, which nobody wants to see.
std::string Shown(double value) { return fmt::format("{}", value == 0.0 ? 0.0 : WithoutNaNSign(value)); }
std::string Shown(std::int32_t value) { return fmt::format("{}", value); }
std::string Shown(std::uint32_t value) { return fmt::format("{}", value); }
std::string Shown(bool value) { return value ? "on" : "off"; }
std::string Shown(const std::wstring& value) { return OnOneLine(TslCommon::ToUtf8(value)); }
std::string Shown(const IOPoint& lens) {
  switch (lens.Type) {
    case IOPoint::SingleType:
      return Shown(lens.Single);
    case IOPoint::CalibratedType:
      return "calibrated";
    case IOPoint::FunctionType:
      return "function";
  }
  return fmt::format("unknown type {}", std::uint32_t{lens.Type});
}
template <class E>
requires std::is_enum_v<E> std::string Shown(E value) {
  const auto index = static_cast<std::uint32_t>(value);
  return index < std::size(kNames<E>) ? std::string(kNames<E>[index]) : fmt::format("unknown {}", index);
}

void Parse(const std::string& name, const std::string& text, double& value) { value = ParseReal(name, text); }
// A number of any size, so that one beyond the type meets the limits of its field: no
// field reaches the ends of the type.
template <class Int>
Int ParseWhole(const std::string& name, const std::string& text) {
  const double value = ParseReal(name, text);
  if (value != std::trunc(value)) throw UsageError(name + ": \"" + text + "\" is not a whole number");
  const bool isBelowUnsigned = std::is_unsigned_v<Int> && value < 0.0;
  return isBelowUnsigned ? std::numeric_limits<Int>::max() : TslCommon::Truncate<Int>(value);
}
void Parse(const std::string& name, const std::string& text, std::int32_t& value) {
  value = ParseWhole<std::int32_t>(name, text);
}
void Parse(const std::string& name, const std::string& text, std::uint32_t& value) {
  value = ParseWhole<std::uint32_t>(name, text);
}
void Parse(const std::string& name, const std::string& text, bool& value) {
  if (!SameText(text, "on") && !SameText(text, "off"))
    throw UsageError(name + ": \"" + text + "\" is not one of on, off");
  value = SameText(text, "on");
}
void Parse(const std::string& name, const std::string& text, std::wstring& value) {
  value = TslCommon::FromUtf8(text);
  if (TslCommon::ToUtf8(value) != text) throw UsageError(name + ": the text is not UTF-8");
}
void Parse(const std::string& name, const std::string& text, IOPoint& lens) {
  if (SameText(text, "calibrated")) {
    lens.Type = IOPoint::CalibratedType;
  } else {
    lens.Single = ParseReal(name, text);
    lens.Type = IOPoint::SingleType;
  }
}
template <class E>
requires std::is_enum_v<E>
void Parse(const std::string& name, const std::string& text, E& value) {
  const auto found = std::ranges::find_if(kNames<E>, [&](auto known) { return SameText(text, known); });
  if (found == std::end(kNames<E>))
    throw UsageError(fmt::format("{}: \"{}\" is not one of {}", name, text, fmt::join(kNames<E>, ", ")));
  value = static_cast<E>(found - std::begin(kNames<E>));
}

template <auto Query>
std::string Show(const DevTuneRules& rules) {
  return Shown((rules.*Query)());
}

// What a text leaves open, such as the other settings of a lens, stays as it is.
template <auto Query, auto Write>
ErrTypes Set(DevTuneRules& rules, const std::string& name, const std::string& text) {
  auto value = (rules.*Query)();
  Parse(name, text, value);
  return (rules.*Write)(value);
}

template <auto Query, auto Write>
ErrTypes Keep(DevTuneRules& rules) {
  const auto value = (rules.*Query)();
  return (rules.*Write)(value);
}

template <class T>
std::string NamesOf() {
  if constexpr (std::is_same_v<T, bool>) {
    return "on, off";
  } else if constexpr (std::is_enum_v<T>) {
    return fmt::format("{}", fmt::join(kNames<T>, ", "));
  } else {
    return "";
  }
}

template <auto Query>
using TypeOf = std::remove_cvref_t<decltype((std::declval<const DevTuneRules&>().*Query)())>;

template <auto Query, auto Write>
constexpr TuneField Row(const char* name, Id id, const char* unit, FieldOf of = FieldOf::Every) {
  return {name, id, unit, of, Show<Query>, Set<Query, Write>, Keep<Query, Write>, NamesOf<TypeOf<Query>>};
}

std::string ShowLastSave(const DevTuneRules& rules) {
  const std::time_t seconds = rules.QLastSaved();
  std::tm utc{};
  char text[64];
  if (gmtime_r(&seconds, &utc) == nullptr || std::strftime(text, sizeof text, "%F %TZ", &utc) == 0)
    return fmt::format("{} s", seconds);
  return text;
}

// What came with a scan's high end is no span.
std::string ShowSpan(const DevTuneRules& rules) {
  const bool isSpan = rules.QSimWithSpan() != Control::NoSpan || rules.ControlData.MZHi == 0.0;
  return isSpan ? Shown(rules.QSimWithSpan()) : "no span: " + Shown(rules.ControlData.MZHi);
}

// "auto" is what the m/z range and the capillary exit need.
ErrTypes SetInitSettleDelay(DevTuneRules& rules, const std::string& name, const std::string& text) {
  if (!SameText(text, "auto")) return rules.WInitSettleDelay(ParseWhole<std::uint32_t>(name, text));
  rules.CalculateInitialSettlingDelay();
  return DevTuneRules::NoError;
}

// Of the catalogue, as "MAKE/MODEL".
ErrTypes SetModel(DevTuneRules& rules, const std::string& name, const std::string& text) {
  const auto slash = text.find('/');
  if (slash == std::string::npos)
    throw UsageError(name + ": \"" + text + "\" is not MAKE/MODEL, as the catalogue of syringes has them");
  return rules.WSyringeModel(TslCommon::FromUtf8(text.substr(0, slash)),
                             TslCommon::FromUtf8(text.substr(slash + 1)));
}

std::string ShowModel(const DevTuneRules& rules) {
  const std::string make = Shown(rules.QSyringeManufacturer());
  const std::string model = Shown(rules.QSyringeModel());
  return model.empty() ? make : make + "/" + model;
}

using R = DevTuneRules;

constexpr TuneField kRecord[] = {
    Row<&R::QName, &R::WName>("Name", Id::Name, ""),
    Row<&R::QComment, &R::WComment>("Comment", Id::Comment, ""),
    {"LastSave", Id::LastSave, "", FieldOf::Every, ShowLastSave, nullptr, nullptr, NamesOf<double>},
};
constexpr TuneField kSource[] = {
    Row<&R::QIonSourceType, &R::WIonSourceType>("SourceType", Id::SourceType, ""),
    Row<&R::QCylinder, &R::WCylinder>("Cylinder", Id::Cylinder, "V", FieldOf::Esi),
    Row<&R::QCoronaVoltage, &R::WCoronaVoltage>("CoronaVoltage", Id::CoronaVoltage, "V", FieldOf::Apci),
    Row<&R::QControlByCurrent, &R::WControlByCurrent>("ControlByCurrent", Id::ControlByCurrent, "",
                                                      FieldOf::Apci),
    Row<&R::QCoronaCurrent, &R::WCoronaCurrent>("CoronaCurrent", Id::CoronaCurrent, "uA", FieldOf::Apci),
    Row<&R::QEndPlate, &R::WEndPlate>("EndPlate", Id::EndPlate, "V"),
    Row<&R::QCapEnter, &R::WCapEnter>("CapEnter", Id::CapEnter, "V"),
    Row<&R::QEndPlateTemp, &R::WEndPlateTemp>("EndPlateTemp", Id::EndPlateTemp, ""),
    Row<&R::QDryGasTemp, &R::WDryGasTemp>("DryGasTemp", Id::DryGasTemp, "C"),
    Row<&R::QDryGasFlow, &R::WDryGasFlow>("DryGasFlow", Id::DryGasFlow, "L/min"),
    Row<&R::QApciVapTemp, &R::WApciVapTemp>("ApciVapTemp", Id::ApciVapTemp, "C", FieldOf::Apci),
    Row<&R::QNeb1GasPres, &R::WNeb1GasPres>("Neb1GasPres", Id::Neb1GasPres, "psi", FieldOf::Esi),
    Row<&R::QApciAuxGas, &R::WApciAuxGas>("ApciAuxGas", Id::ApciAuxGas, "psi", FieldOf::Apci),
    Row<&R::QApciNebGas, &R::WApciNebGas>("ApciNebGas", Id::ApciNebGas, "", FieldOf::Apci),
    Row<&R::QNeb2GasOn, &R::WNeb2GasOn>("Neb2GasOn", Id::Neb2GasOn, ""),
    Row<&R::QCalValveOn, &R::WCalValveOn>("CalValveOn", Id::CalValveOn, "", FieldOf::Esi),
    Row<&R::QCalValve2On, &R::WCalValve2On>("CalValve2On", Id::CalValve2On, ""),
    Row<&R::QCalSample1On, &R::WCalSample1On>("CalSample1On", Id::CalSample1On, ""),
    Row<&R::QCalSample2On, &R::WCalSample2On>("CalSample2On", Id::CalSample2On, ""),
};
constexpr TuneField kAcquisition[] = {
    Row<&R::QControlType, &R::WControlType>("ControlType", Id::ControlType, ""),
    Row<&R::QPolarityType, &R::WPolarityType>("PolarityType", Id::PolarityType, ""),
    Row<&R::QMZLow, &R::WMZLow>("MZLow", Id::MZLow, "m/z"),
    Row<&R::QMZHi, &R::WMZHi>("MZHi", Id::MZHi, "m/z", FieldOf::Scan),
    {"SimWithSpan", Id::MZHi, "m/z", FieldOf::Sim, ShowSpan, Set<&R::QSimWithSpan, &R::WSimWithSpan>, nullptr,
     NamesOf<Control::SimWithSpanTypes>},
    Row<&R::QMZStepSize, &R::WMZStepSize>("MZStepSize", Id::MZStepSize, "m/z"),
    {"InitSettleDelay", Id::InitSettleDelay, "us", FieldOf::Every, Show<&R::QInitSettleDelay>,
     SetInitSettleDelay, Keep<&R::QInitSettleDelay, &R::WInitSettleDelay>, NamesOf<double>},
    Row<&R::QStepSettleDelay, &R::WStepSettleDelay>("StepSettleDelay", Id::StepSettleDelay, "us"),
    Row<&R::QPulseCountDelay, &R::WPulseCountDelay>("PulseCountDelay", Id::PulseCountDelayScan, "us",
                                                    FieldOf::Scan),
    Row<&R::QPulseCountDelay, &R::WPulseCountDelay>("PulseCountDelay", Id::PulseCountDelaySim, "us",
                                                    FieldOf::Sim),
    Row<&R::QScansPerSpec, &R::WScansPerSpec>("ScansPerSpec", Id::ScansPerSpec, ""),
};
constexpr TuneField kIonPath[] = {
    Row<&R::QCapExit, &R::WCapExit>("CapExit", Id::CapExit, "V"),
    Row<&R::QSkimmer, &R::WSkimmer>("Skimmer", Id::Skimmer, "V"),
    Row<&R::QQ0RFAmpl, &R::WQ0RFAmpl>("Q0RFAmpl", Id::Q0RFAmpl, "V"),
    Row<&R::QQ0Offset, &R::WQ0Offset>("Q0Offset", Id::Q0Offset, "V"),
    Row<&R::QQ0Exit1, &R::WQ0Exit1>("Q0Exit1", Id::Q0Exit1, "V"),
    Row<&R::QQ0Exit2, &R::WQ0Exit2>("Q0Exit2", Id::Q0Exit2, "V"),
    Row<&R::QQ1MZType, &R::WQ1MZType>("Q1MZType", Id::Q1MZType, ""),
    Row<&R::QQ1Resolution, &R::WQ1Resolution>("Q1Resolution", Id::Q1Resolution, "%"),
    Row<&R::QQ1CoarseResolution, &R::WQ1CoarseResolution>("Q1CoarseResolution", Id::Q1CoarseResolution, "%"),
    Row<&R::QQ1Offset, &R::WQ1Offset>("Q1Offset", Id::Q1Offset, "V"),
    {"Q1Enter", Id::Q1Enter, "V", FieldOf::Every, Show<&R::QQ1Enter>, nullptr, nullptr, NamesOf<double>},
    Row<&R::QQ1IonGuide, &R::WQ1IonGuide>("Q1IonGuide", Id::Q1IonGuide, "V"),
    Row<&R::QQ1PolePolarity, &R::WQ1PolePolarity>("Q1PolePolarity", Id::Q1PolePolarity, ""),
    Row<&R::QHEDynode, &R::WHEDynode>("HEDynode", Id::HEDynode, "V"),
    Row<&R::QDetectorGain, &R::WDetectorGain>("DetectorGain", Id::DetectorGain, "V"),
    Row<&R::QSignalThreshold, &R::WSignalThreshold>("SignalThreshold", Id::SignalThreshold, ""),
};
constexpr TuneField kSyringe[] = {
    {"Model", Id::Model, "", FieldOf::Every, ShowModel, SetModel, nullptr, NamesOf<double>},
    {"Diameter", Id::Diameter, "mm", FieldOf::Every, Show<&R::QSyringeDiameter>,
     Set<&R::QSyringeDiameter, &R::WSyringeCustom>, nullptr, NamesOf<double>},
    Row<&R::QSyringeFlow, &R::WSyringeFlow>("FlowRate", Id::FlowRate, ""),
};
constexpr FieldGroup kGroups[] = {{"Tune", kRecord},
                                  {"Ion source", kSource},
                                  {"Acquisition", kAcquisition},
                                  {"Ion path and detector", kIonPath},
                                  {"Syringe", kSyringe}};

// Names that hold the text, or that it holds.
std::vector<std::string> NamesLike(std::string_view text) {
  const auto lower = [](std::string_view name) {
    std::string made(name);
    std::ranges::transform(made, made.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return made;
  };
  const std::string wanted = lower(text);
  std::vector<std::string> names;
  for (const FieldGroup& group : kGroups)
    for (const TuneField& field : group.fields) {
      const std::string name = lower(field.name);
      const bool isLike = name.find(wanted) != std::string::npos || wanted.find(name) != std::string::npos;
      if (isLike && std::ranges::find(names, field.name) == names.end()) names.emplace_back(field.name);
    }
  return names;
}

[[noreturn]] void RefuseName(std::string_view name) {
  const std::vector<std::string> like = NamesLike(name);
  throw UsageError(fmt::format("there is no field \"{}\"; {}", name,
                               like.empty() ? "'tslbl tune set --help' lists them"
                                            : fmt::format("is {} meant?", fmt::join(like, " or "))));
}

}  // namespace

std::span<const FieldGroup> TuneFieldGroups() { return kGroups; }

bool HasField(const Tune& tune, const TuneField& field) {
  switch (field.of) {
    case FieldOf::Every:
      return true;
    case FieldOf::Esi:
      return tune.Source.Type != Probes::APCI;
    case FieldOf::Apci:
      return tune.Source.Type == Probes::APCI;
    case FieldOf::Scan:
      return tune.ControlData.Type == Control::Scan;
    case FieldOf::Sim:
      return tune.ControlData.Type != Control::Scan;
  }
  return false;
}

bool SameText(std::string_view a, std::string_view b) {
  return TslCommon::EqualsIgnoreCase(TslCommon::FromUtf8(a), TslCommon::FromUtf8(b));
}

std::string DisplayName(const TuneField& field) {
  // A span stands in the place of the high end.
  const bool isSpan = field.of == FieldOf::Sim && field.id == Id::MZHi;
  return isSpan ? "SIM Span" : TslCommon::ToUtf8(TslBL::TuneField::FieldToString(field.id));
}

std::string ValueNames(const TuneField& field) { return field.names(); }

std::string OnOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
  return text;
}

const TuneField& FindTuneField(const Tune& tune, std::string_view name) {
  const TuneField* found = nullptr;
  for (const FieldGroup& group : kGroups)
    for (const TuneField& field : group.fields)
      if (SameText(field.name, name) && (found == nullptr || HasField(tune, field))) found = &field;
  if (found == nullptr) RefuseName(name);
  return *found;
}

}  // namespace TslTool
