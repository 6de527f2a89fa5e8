#pragma once
// The values of a tune at the places of its fields.
//
// For the sources of this room; not part of the library's interface.

#include <tslbl/tune/FieldTable.h>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <variant>

namespace TslBL {

// Where a field stands that is known when it is compiled: the pointer itself.
template <std::size_t field>
constexpr auto PlaceOf() {
  constexpr FieldPlace kPlace = kFieldTable[field].place;
  return std::get<kPlace.index()>(kPlace);
}

// Calls `visit(row, value)` for each field that stands in this record of a tune, in the order
// of numbers, and so once for each field of those that share a place.
template <class Record, class Visit>
void ForEachFieldIn(Record& record, Visit visit) {
  const auto visitField = [&]<std::size_t field>(std::integral_constant<std::size_t, field>) {
    constexpr auto kMember = PlaceOf<field>();
    if constexpr (requires { record.*kMember; }) visit(kFieldTable[field], record.*kMember);
  };
  [&]<std::size_t... fields>(std::index_sequence<fields...>) {
    (visitField(std::integral_constant<std::size_t, fields>()), ...);
  }
  (std::make_index_sequence<kFieldTable.size()>());
}

template <class T>
T& At(Tune& tune, T Control::*member) {
  return tune.ControlData.*member;
}
template <class T>
T& At(Tune& tune, T IonSource::*member) {
  return tune.Source.*member;
}

// The value of a field that is known when it is compiled, in its own type.
template <TuneField::Id field>
auto& FieldIn(Tune& tune) {
  return At(tune, PlaceOf<field>());
}

}  // namespace TslBL
