#include <tool/commands/tune/UserFields.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/SyringeCatalogue.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <ctime>
#include <iterator>
#include <type_traits>
#include <utility>

namespace TslTool {
namespace {

using TslBL::AppliesTo;
using TslBL::Control;
using TslBL::DevTuneRules;
using Id = TslBL::TuneField::Id;
using ErrTypes = DevTuneRules::ErrTypes;

template <auto Query>
std::string Show(const DevTuneRules& rules) {
  return Shown((rules.*Query)());
}

template <auto Query, auto Write>
ErrTypes Set(DevTuneRules& rules, const std::string& name, const std::string& text) {
  auto value = (rules.*Query)();
  Parse(name, text, value);
  return (rules.*Write)(value);
}

template <auto Query, auto Write>
ErrTypes Recheck(DevTuneRules& rules) {
  const auto value = (rules.*Query)();
  return (rules.*Write)(value);
}

template <auto Query>
using TypeOf = std::remove_cvref_t<decltype((std::declval<const DevTuneRules&>().*Query)())>;

template <auto Query, auto Write>
constexpr UserField Row(const char* name, Id id) {
  return {name,
          id,
          TslBL::FindField(id)->traits.appliesTo,
          Show<Query>,
          Set<Query, Write>,
          Recheck<Query, Write>,
          ValueNamesOf<TypeOf<Query>>};
}

// The same place, under another name for some tunes.
constexpr UserField Only(AppliesTo tunes, UserField field) {
  field.appliesTo = tunes;
  return field;
}

std::string NoNames() { return ""; }

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
  return isSpan ? Shown(rules.QSimWithSpan()) : "not a span: " + Shown(rules.ControlData.MZHi);
}

// Of the catalogue, as "MAKE/MODEL".
ErrTypes SetModel(DevTuneRules& rules, const std::string& name, const std::string& text) {
  if (const auto known = FindSyringe(text))
    return rules.WSyringeModel(known->manufacturer, known->model.Name);
  const auto slash = text.find('/');
  if (slash == std::string::npos)
    throw UsageError(name + ": \"" + text +
                     "\" is not MAKE/MODEL; 'tslbl tune syringes' lists the catalogue");
  return rules.WSyringeModel(TslCommon::FromUtf8(text.substr(0, slash)),
                             TslCommon::FromUtf8(text.substr(slash + 1)));
}

std::string ShowModel(const DevTuneRules& rules) {
  const std::string make = Shown(rules.QSyringeManufacturer());
  const std::string model = Shown(rules.QSyringeModel());
  return model.empty() ? make : make + "/" + model;
}

std::string ShowRange(const DevTuneRules& rules) {
  return fmt::format("{}-{}", rules.QMZLow(), rules.QMZHi());
}

// In one call, since the range between two calls could be refused.
ErrTypes SetRange(DevTuneRules& rules, const std::string& name, const std::string& text) {
  const RealRange range = ParseRealRange(name, text);
  if (!HasTwoEnds(text)) throw UsageError(name + ": \"" + text + "\" is not LOW-HIGH");
  rules.QLastError();
  const ErrTypes high = rules.WMZRange(range.from, range.to);
  // The writer tells of a bad low end by its text alone.
  return rules.QMZLow() == range.from ? high : DevTuneRules::Error;
}

// The rules would take any other number for 10.
ErrTypes SetSamplesPerMass(DevTuneRules& rules, const std::string& name, const std::string& text) {
  const double samples = ParseReal(name, text);
  const auto known = DevTuneRules::QSamplings();
  if (std::ranges::find(known, samples) == known.end())
    throw UsageError(fmt::format("{}: \"{}\" is not one of {}", name, text, fmt::join(known, ", ")));
  return rules.WSamplesPerMass(samples);
}

using R = DevTuneRules;

constexpr UserField kRecord[] = {
    Row<&R::QName, &R::WName>("Name", Id::Name),
    Row<&R::QComment, &R::WComment>("Comment", Id::Comment),
    {"LastSave", Id::LastSave, AppliesTo::Every, ShowLastSave, nullptr, nullptr, NoNames},
};
constexpr UserField kSource[] = {
    Row<&R::QIonSourceType, &R::WIonSourceType>("SourceType", Id::SourceType),
    Row<&R::QCylinder, &R::WCylinder>("Cylinder", Id::Cylinder),
    Row<&R::QCoronaVoltage, &R::WCoronaVoltage>("CoronaVoltage", Id::CoronaVoltage),
    Row<&R::QControlByCurrent, &R::WControlByCurrent>("ControlByCurrent", Id::ControlByCurrent),
    Row<&R::QCoronaCurrent, &R::WCoronaCurrent>("CoronaCurrent", Id::CoronaCurrent),
    Row<&R::QEndPlate, &R::WEndPlate>("EndPlate", Id::EndPlate),
    Row<&R::QCapEnter, &R::WCapEnter>("CapEnter", Id::CapEnter),
    Row<&R::QEndPlateTemp, &R::WEndPlateTemp>("EndPlateTemp", Id::EndPlateTemp),
    Row<&R::QDryGasTemp, &R::WDryGasTemp>("DryGasTemp", Id::DryGasTemp),
    Row<&R::QDryGasFlow, &R::WDryGasFlow>("DryGasFlow", Id::DryGasFlow),
    Row<&R::QApciVapTemp, &R::WApciVapTemp>("ApciVapTemp", Id::ApciVapTemp),
    Row<&R::QNeb1GasPres, &R::WNeb1GasPres>("Neb1GasPres", Id::Neb1GasPres),
    Row<&R::QApciAuxGas, &R::WApciAuxGas>("ApciAuxGas", Id::ApciAuxGas),
    Row<&R::QApciNebGas, &R::WApciNebGas>("ApciNebGas", Id::ApciNebGas),
    Row<&R::QNeb2GasOn, &R::WNeb2GasOn>("Neb2GasOn", Id::Neb2GasOn),
    Row<&R::QCalValveOn, &R::WCalValveOn>("CalValveOn", Id::CalValveOn),
    Row<&R::QCalValve2On, &R::WCalValve2On>("CalValve2On", Id::CalValve2On),
    Row<&R::QCalSample1On, &R::WCalSample1On>("CalSample1On", Id::CalSample1On),
    Row<&R::QCalSample2On, &R::WCalSample2On>("CalSample2On", Id::CalSample2On),
};
constexpr UserField kAcquisition[] = {
    Row<&R::QControlType, &R::WControlType>("ControlType", Id::ControlType),
    Row<&R::QPolarityType, &R::WPolarityType>("PolarityType", Id::PolarityType),
    Only(AppliesTo::Sim, Row<&R::QMZLow, &R::WMZLow>("MZ", Id::MZLow)),
    Only(AppliesTo::Scan, Row<&R::QMZLow, &R::WMZLow>("MZLow", Id::MZLow)),
    Row<&R::QMZHi, &R::WMZHi>("MZHi", Id::MZHi),
    {"SimWithSpan", Id::MZHi, AppliesTo::Sim, ShowSpan, Set<&R::QSimWithSpan, &R::WSimWithSpan>, nullptr,
     ValueNamesOf<Control::SimWithSpanTypes>},
    Row<&R::QMZStepSize, &R::WMZStepSize>("MZStepSize", Id::MZStepSize),
    Row<&R::QInitSettleDelay, &R::WInitSettleDelay>("InitSettleDelay", Id::InitSettleDelay),
    Row<&R::QStepSettleDelay, &R::WStepSettleDelay>("StepSettleDelay", Id::StepSettleDelay),
    Row<&R::QPulseCountDelay, &R::WPulseCountDelay>("PulseCountDelay", Id::PulseCountDelayScan),
    Row<&R::QPulseCountDelay, &R::WPulseCountDelay>("PulseCountDelay", Id::PulseCountDelaySim),
    Row<&R::QScansPerSpec, &R::WScansPerSpec>("ScansPerSpec", Id::ScansPerSpec),
};
constexpr UserField kIonPath[] = {
    Row<&R::QCapExit, &R::WCapExit>("CapExit", Id::CapExit),
    Row<&R::QSkimmer, &R::WSkimmer>("Skimmer", Id::Skimmer),
    Row<&R::QQ0RFAmpl, &R::WQ0RFAmpl>("Q0RFAmpl", Id::Q0RFAmpl),
    Row<&R::QQ0Offset, &R::WQ0Offset>("Q0Offset", Id::Q0Offset),
    Row<&R::QQ0Exit1, &R::WQ0Exit1>("Q0Exit1", Id::Q0Exit1),
    Row<&R::QQ0Exit2, &R::WQ0Exit2>("Q0Exit2", Id::Q0Exit2),
    Row<&R::QQ1MZType, &R::WQ1MZType>("Q1MZType", Id::Q1MZType),
    Row<&R::QQ1Resolution, &R::WQ1Resolution>("Q1Resolution", Id::Q1Resolution),
    Row<&R::QQ1CoarseResolution, &R::WQ1CoarseResolution>("Q1CoarseResolution", Id::Q1CoarseResolution),
    Row<&R::QQ1Offset, &R::WQ1Offset>("Q1Offset", Id::Q1Offset),
    {"Q1Enter", Id::Q1Enter, AppliesTo::Every, Show<&R::QQ1Enter>, nullptr, nullptr, NoNames},
    Row<&R::QQ1IonGuide, &R::WQ1IonGuide>("Q1IonGuide", Id::Q1IonGuide),
    Row<&R::QQ1PolePolarity, &R::WQ1PolePolarity>("Q1PolePolarity", Id::Q1PolePolarity),
    Row<&R::QHEDynode, &R::WHEDynode>("HEDynode", Id::HEDynode),
    Row<&R::QDetectorGain, &R::WDetectorGain>("DetectorGain", Id::DetectorGain),
    Row<&R::QSignalThreshold, &R::WSignalThreshold>("SignalThreshold", Id::SignalThreshold),
};
constexpr UserField kSyringe[] = {
    {"Model", Id::Model, AppliesTo::Every, ShowModel, SetModel, nullptr, NoNames},
    {"Diameter", Id::Diameter, AppliesTo::Every, Show<&R::QSyringeDiameter>,
     Set<&R::QSyringeDiameter, &R::WSyringeCustom>, nullptr, NoNames},
    Row<&R::QSyringeFlow, &R::WSyringeFlow>("FlowRate", Id::FlowRate),
};
constexpr FieldGroup kGroups[] = {{"Tune", kRecord},
                                  {"Ion source", kSource},
                                  {"Acquisition", kAcquisition},
                                  {"Ion path and detector", kIonPath},
                                  {"Syringe", kSyringe}};

constexpr UserField kCombined[] = {
    {"MZRange", Id::MZLow, AppliesTo::Every, ShowRange, SetRange, nullptr,
     [] { return std::string("LOW-HIGH"); }},
    {"SamplesPerMass", Id::MZStepSize, AppliesTo::Every, Show<&R::QSamplesPerMass>, SetSamplesPerMass,
     nullptr, [] { return fmt::format("{}", fmt::join(DevTuneRules::QSamplings(), "|")); }},
};

// Fields that are shown and set as a part of others: of a calibration, which has a section of
// its own, of a lens, of a model.
constexpr Id kElsewhere[] = {Id::MZ,       Id::MassDAC,     Id::MZCalPts,
                             Id::Q1CalPts, Id::IOPointType, Id::Manufacturer};

constexpr bool HasRow(Id id) {
  return std::ranges::any_of(kGroups, [id](const FieldGroup& group) {
    return std::ranges::find(group.fields, id, &UserField::id) != group.fields.end();
  });
}
static_assert(std::ranges::all_of(TslBL::kFieldTable,
                                  [](const TslBL::FieldRow& row) {
                                    const bool isElsewhere =
                                        std::ranges::find(kElsewhere, row.id) != std::end(kElsewhere);
                                    return HasRow(row.id) != isElsewhere;
                                  }),
              "A field of the library has no row here.");

}  // namespace

std::span<const FieldGroup> UserFieldGroups() { return kGroups; }
std::span<const UserField> CombinedFields() { return kCombined; }

bool HasField(const TslBL::Tune& tune, const UserField& field) {
  return TslBL::IsAmong(tune, field.appliesTo);
}

std::string DisplayName(const UserField& field) {
  // The m/z of a SIM stands in the place of a scan's low end, its span in that of the high end.
  const bool isOfSim = field.appliesTo == AppliesTo::Sim;
  if (isOfSim && field.id == Id::MZHi) return "SIM Span";
  if (isOfSim && field.id == Id::MZLow) return "SIM m/z";
  return TslCommon::ToUtf8(TslBL::TuneField::FieldToString(field.id));
}

std::string UnitOf(const UserField& field) {
  return TslCommon::ToUtf8(TslBL::FindField(field.id)->traits.unit);
}

}  // namespace TslTool
