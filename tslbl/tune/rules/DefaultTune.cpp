#include <tslbl/tune/rules/DefaultTune.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/FieldPlaces.h>
#include <tslbl/tune/rules/TurnVoltages.h>
#include <cstddef>
#include <iterator>

namespace TslBL {
namespace {

struct UsualCalibrant {
  const wchar_t* name;
  double mz;
};
// The values of each lens there stand in its row of the field table.
constexpr UsualCalibrant kCalibrants[] = {{L"Fragment 2", 39.0},
                                          {L"Agilent 1", 118.0},
                                          {L"Agilent 2", 322.0},
                                          {L"Agilent 5", 1521.0},
                                          {L"Agilent 7", 2721.0}};
static_assert(std::size(kCalibrants) == NewCurve::kPoints, "Each lens has a value at each calibrant.");

void Assign(IOPoint& lens, double value) { lens.Single = value; }
template <class T>
void Assign(T& stored, double value) {
  stored = static_cast<T>(value);
}

// The values that the record's fields have in a new tune.
template <class Record>
Record MakeNew(double NewValue::*ofProbe) {
  Record record;
  ForEachFieldIn(record, [&](const FieldRow& row, auto& stored) {
    if (row.traits.newValue) Assign(stored, (*row.traits.newValue).*ofProbe);
  });
  return record;
}

}  // namespace

TuneInfo DefaultTuneInfo() {
  TuneInfo info;
  info.Name = TslLoadString(ModuleHandle(), kNewTune);
  info.LastSave = UnixSecondsNow();
  return info;
}

Control DefaultControl() { return MakeNew<Control>(&NewValue::esi); }

IonSource DefaultIonSource(Probes::ProbeTypes probe, PolarityTypes polarity) {
  IonSource source = MakeNew<IonSource>(probe == Probes::APCI ? &NewValue::apci : &NewValue::esi);
  source.Type = probe;
  if (polarity == PolarityNegative) TurnVoltages(source);
  return source;
}

std::vector<MZCalPt> DefaultMZCalPts() {
  const Limits low = FieldLimits().QLimits(Probes::ESI, TuneField::MZLow);
  const Limits high = FieldLimits().QLimits(Probes::ESI, TuneField::MZHi);
  return {{L"Default Low", low.Min, low.Min / low.Step}, {L"Default High", high.Max, high.Max / high.Step}};
}

std::vector<Q1CalPt> DefaultQ1CalPts() {
  std::vector<Q1CalPt> points;
  for (std::size_t i = 0; i < std::size(kCalibrants); ++i) {
    Q1CalPt& point = points.emplace_back(kCalibrants[i].mz, kCalibrants[i].name);
    for (const TuneField::Id field : kSteppableFields)
      point.Fields[field] = kFieldTable[field].traits.newCurve->values[i];
  }
  return points;
}

}  // namespace TslBL
