#pragma once
// What must hold of the table of fields, as predicates over any table. FieldTable.cpp asserts
// them when it is compiled.
//
// For the sources of this room; not part of the library's interface.

#include <tslbl/tune/FieldRow.h>
#include <algorithm>
#include <cstddef>
#include <span>
#include <variant>

namespace TslBL {

using FieldRows = std::span<const FieldRow>;

template <class Member>
constexpr bool IsAt(const FieldRow& row) {
  return std::holds_alternative<Member>(row.place);
}

constexpr bool HasPlace(const FieldRow& row) { return row.place != kNowhere; }
constexpr bool IsSwitch(const FieldRow& row) {
  return IsAt<bool Control::*>(row) || IsAt<bool IonSource::*>(row);
}
// What has a number that limits can be held against.
constexpr bool IsNumeric(const FieldRow& row) { return HasPlace(row) && !IsSwitch(row); }
// What a change of polarity can turn.
constexpr bool HoldsVolts(const FieldRow& row) {
  return IsAt<IOPoint Control::*>(row) || IsAt<std::int32_t Control::*>(row) ||
         IsAt<std::int32_t IonSource::*>(row);
}

constexpr bool RowsStandAtTheirNumbers(FieldRows rows) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].id != i) return false;
  return true;
}

// Under every kind of probe that has the field.
constexpr bool HasLimits(const FieldRow& row) {
  const auto& [all, esi, apci, fixed] = row.limits;
  const bool everyEsi = esi || row.traits.appliesTo == AppliesTo::Apci;
  const bool everyApci = apci || row.traits.appliesTo == AppliesTo::Esi;
  return all || (everyEsi && everyApci);
}
constexpr bool NumbersHaveLimits(FieldRows rows) {
  return std::ranges::all_of(rows, [](const FieldRow& row) { return !IsNumeric(row) || HasLimits(row); });
}

// A ramp steps numbers alone.
constexpr bool RampedFieldsAreNumbers(FieldRows rows) {
  return std::ranges::all_of(rows, [](const FieldRow& row) { return !row.IsRampable() || IsNumeric(row); });
}

// A lens follows m/z, and nothing else; a new tune has points for it.
constexpr bool SteppableFieldsAreLensesWithACurve(FieldRows rows) {
  return std::ranges::all_of(rows, [](const FieldRow& row) {
    const bool hasCurve = row.traits.newCurve.has_value();
    return row.IsSteppable() ? hasCurve && row.Lens() != nullptr : !hasCurve;
  });
}

// Fields that share a place have one value there.
constexpr bool EachPlaceHasOneNewValue(FieldRows rows) {
  return std::ranges::all_of(rows, [&](const FieldRow& row) {
    const auto valuesThere = std::ranges::count_if(rows, [&](const FieldRow& other) {
      return other.place == row.place && other.traits.newValue.has_value();
    });
    return valuesThere == (HasPlace(row) ? 1 : 0);
  });
}

// Turned twice, a voltage would be as it was.
constexpr bool EachVoltageTurnsOnce(FieldRows rows) {
  return std::ranges::all_of(rows, [&](const FieldRow& row) {
    const auto turnsThere = std::ranges::count_if(rows, [&](const FieldRow& other) {
      return other.place == row.place && other.traits.followsPolarity;
    });
    return turnsThere == 0 || (turnsThere == 1 && HoldsVolts(row));
  });
}

// Each on one before it in the ion path, so that none stands on itself.
constexpr bool LensesStandOnLenses(FieldRows rows) {
  return std::ranges::all_of(rows, [&](const FieldRow& row) {
    const auto base = row.traits.standsOn;
    return !base || (row.Lens() != nullptr && *base < row.id && rows[*base].Lens() != nullptr);
  });
}

}  // namespace TslBL
