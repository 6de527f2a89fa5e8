#include <tslbl/tune/rules/DevTuneRules.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/SyringeList.h>
#include <tslbl/tune/rules/DefaultTune.h>
#include <tslbl/tune/rules/SimSpans.h>
#include <utility>

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
  Modified = false;
  LastError.clear();
  return *this;
}

void DevTuneRules::QLastError(std::wstring& error) const { error = QLastError(); }
std::wstring DevTuneRules::QLastError() const { return std::exchange(LastError, {}); }

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

void DevTuneRules::QLimitsSyringe(TuneField::Id field, double& min, double& max) {
  const bool isDiameter = field == TuneField::Diameter;
  min = isDiameter ? 0.46 : 0.0;
  max = isDiameter ? 10.3 : 999.0;
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
