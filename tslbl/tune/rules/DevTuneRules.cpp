#include <tslbl/tune/rules/DevTuneRules.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/SyringeList.h>
#include <tslbl/tune/rules/DefaultTune.h>
#include <tslbl/tune/rules/SimSpans.h>

namespace TslBL {
namespace {

// A site without a catalogue, or with one that cannot be read, has tunes without a syringe.
Syringe FirstOfCatalogue() {
  Syringe syringe;
  try {
    const SyringeList list = SyringeList::Load();
    if (list.Manufacturers.empty()) return syringe;
    const SyringeManufacturer& manufacturer = list.Manufacturers.front();
    syringe.Manufacturer = manufacturer.Name;
    if (!manufacturer.Models.empty()) syringe.Model = manufacturer.Models.front();
  } catch (...) {
    return Syringe();
  }
  return syringe;
}

}  // namespace

DevTuneRules::DevTuneRules(Probes::ProbeTypes probe) {
  Info = DefaultTuneInfo();
  ControlData = DefaultControl();
  Source = DefaultIonSource(probe, PolarityPositive);
  CalculateInitialSettlingDelay();
  SyringeData = FirstOfCatalogue();
  MZCalPts = DefaultMZCalPts();
  Q1CalPts = DefaultQ1CalPts();
}

DevTuneRules& DevTuneRules::operator=(const Tune& tune) {
  Tune::operator=(tune);
  Forget();
  return *this;
}

void DevTuneRules::QLimits(TuneField::Id field, double& min, double& max, double& step,
                           Probes::ProbeTypes probe) {
  const Limits limits = FieldLimits().QLimits(probe, static_cast<int>(field));
  min = limits.Min;
  max = limits.Max;
  step = limits.Step;
}

double DevTuneRules::QMinMz() { return FieldLimits().QLimits(TuneField::MZ).Min; }
double DevTuneRules::QMaxMz() { return FieldLimits().QLimits(TuneField::MZ).Max; }

void DevTuneRules::QLimitsSimWithSpan(double& min, double& max, double& step) {
  min = 0.2;
  max = 1.0;
  step = 0.2;
}

double DevTuneRules::QSimWithSpanStepSize() { return 0.1; }

std::span<const double> DevTuneRules::QSimSpans() { return kSimSpans; }

std::span<const std::int32_t> DevTuneRules::QSamplings() {
  static constexpr std::int32_t kSamplings[] = {20, 10, 6, 5, 4};
  return kSamplings;
}

void DevTuneRules::QLimitsSyringe(TuneField::Id field, double& min, double& max) {
  const bool isDiameter = field == TuneField::Diameter;
  const auto limits = FindField(isDiameter ? TuneField::Diameter : TuneField::FlowRate)->limits.fixed;
  min = limits->Min;
  max = limits->Max;
}

// The end plate and the capillary entrance of an APCI source draw the ions on: they cannot
// take their sign. The needle makes the ions: it has their sign.
Limits DevTuneRules::QLimitsNow(TuneField::Id field) const {
  const FieldRow* row = FindField(field);
  if (row != nullptr && row->limits.fixed) return *row->limits.fixed;
  Limits limits = LimitsOf(field);
  if (row == nullptr || Source.Type != Probes::APCI || row->traits.apciSign == ApciSign::Any) return limits;
  const bool ionsArePositive = ControlData.PolarityType == PolarityPositive;
  const bool isPositive = ionsArePositive == (row->traits.apciSign == ApciSign::OfIons);
  (isPositive ? limits.Min : limits.Max) = 0.0;
  return limits;
}

std::int32_t DevTuneRules::TranslateField(TuneField::Id field, double value) {
  return TranslateField(Probes::ESI, field, value);
}

std::int32_t DevTuneRules::TranslateField(Probes::ProbeTypes probe, TuneField::Id field, double value) {
  const double units = value / FieldLimits().QLimits(probe, static_cast<int>(field)).Step;
  return Truncate<std::int32_t>(units + (value < 0.0 ? -0.5 : 0.5));
}

double DevTuneRules::QMZHi() const {
  return ControlData.Type == Control::Scan ? ControlData.MZHi : LimitsOf(TuneField::MZHi).Max;
}

Control::SimWithSpanTypes DevTuneRules::QSimWithSpan() const {
  for (std::uint32_t code = Control::Span0_2; code <= Control::Span2_0; ++code)
    if (ControlData.MZHi == kSimSpans[code]) return static_cast<Control::SimWithSpanTypes>(code);
  return Control::NoSpan;
}

double DevTuneRules::QSamplesPerMass() const { return Truncate<std::int32_t>(1.0 / ControlData.MZStepSize); }

}  // namespace TslBL
