#include <tslbl/tune/FieldTable.h>

#include <tslbl/tune/FieldTableChecks.h>
#include <variant>

namespace TslBL {

static_assert(kFieldTable.size() == TuneField::kFieldCount, "A field has no row, or a row no number.");
static_assert(RowsStandAtTheirNumbers(kFieldTable), "The row of a field is found by its number.");
static_assert(NumbersHaveLimits(kFieldTable), "Any number would pass, or none.");
static_assert(RampedFieldsAreNumbers(kFieldTable));
static_assert(SteppableFieldsAreLensesWithACurve(kFieldTable));
static_assert(EachPlaceHasOneNewValue(kFieldTable), "A new tune would lack a value, or have two for one.");
static_assert(EachVoltageTurnsOnce(kFieldTable));
static_assert(LensesStandOnLenses(kFieldTable));

namespace {

struct ValueOf {
  const Tune& tune;

  std::optional<double> operator()(std::monostate) const { return std::nullopt; }
  std::optional<double> operator()(IOPoint Control::*lens) const { return (tune.ControlData.*lens).Single; }
  template <class T>
  std::optional<double> operator()(T Control::*member) const {
    return static_cast<double>(tune.ControlData.*member);
  }
  template <class T>
  std::optional<double> operator()(T IonSource::*member) const {
    return static_cast<double>(tune.Source.*member);
  }
};

}  // namespace

bool IsAmong(const Tune& tune, AppliesTo tunes) {
  switch (tunes) {
    case AppliesTo::Every:
      return true;
    case AppliesTo::Esi:
      return tune.Source.Type != Probes::APCI;
    case AppliesTo::Apci:
      return tune.Source.Type == Probes::APCI;
    case AppliesTo::Scan:
      return tune.ControlData.Type == Control::Scan;
    case AppliesTo::Sim:
      return tune.ControlData.Type != Control::Scan;
  }
  return false;
}

bool HasField(const Tune& tune, TuneField::Id field) {
  const FieldRow* row = FindField(field);
  return row != nullptr && IsAmong(tune, row->traits.appliesTo);
}

std::optional<double> FieldValue(const Tune& tune, TuneField::Id field) {
  const FieldRow* row = FindField(field);
  return row != nullptr ? std::visit(ValueOf{tune}, row->place) : std::nullopt;
}

}  // namespace TslBL
