#include <tslbl/tune/rules/TurnVoltages.h>

#include <tslbl/tune/FieldPlaces.h>

namespace TslBL {
namespace {

// A file may hold the smallest integer, which has no opposite.
void Turn(std::int32_t& volts) { volts = static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(volts)); }

void Turn(IOPoint& lens) {
  lens.Single *= -1.0;
  lens.Start *= -1.0;
  lens.End *= -1.0;
}

template <class Record>
void TurnFieldsIn(Record& record) {
  ForEachFieldIn(record, [](const FieldRow& row, auto& value) {
    if constexpr (requires { Turn(value); }) {
      if (row.traits.followsPolarity) Turn(value);
    }
  });
}

bool TurnsInPoints(TuneField::Id field) {
  const FieldRow* row = FindField(field);
  return row != nullptr && row->IsSteppable() && row->traits.followsPolarity;
}

}  // namespace

void TurnVoltages(IonSource& source) { TurnFieldsIn(source); }
void TurnVoltages(Control& control) { TurnFieldsIn(control); }

void TurnVoltages(std::vector<Q1CalPt>& points) {
  for (Q1CalPt& point : points)
    for (auto& [field, value] : point.Fields)
      if (TurnsInPoints(field)) value *= -1.0;
}

}  // namespace TslBL
