#pragma once
// What is known of a field of a tune: the form of a row of FieldTable.h.

#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/Tune.h>
#include <cstdint>
#include <optional>
#include <variant>

namespace TslBL {

// The member of a tune's records that holds the field. Nowhere, for a field that stands in
// calibration points, in the tune's texts or in its syringe.
using FieldPlace =
    std::variant<std::monostate, IOPoint Control::*, double Control::*, std::int32_t Control::*,
                 std::uint32_t Control::*, bool Control::*, Control::Types Control::*,
                 Control::Q1MZTypes Control::*, PolarityTypes Control::*, double IonSource::*,
                 std::int32_t IonSource::*, std::uint32_t IonSource::*, bool IonSource::*,
                 Probes::ProbeTypes IonSource::*, IonSource::TempLevels IonSource::*>;
inline constexpr FieldPlace kNowhere{};

// The limits of a field before a site changes them: those of all probes, or those of each
// kind of probe that has the field. What counts in the end is told by FieldLimits.
struct BuiltInLimits {
  // A switch, a text or a list.
  static constexpr BuiltInLimits None() { return {{}, {}, {}, {}}; }
  static constexpr BuiltInLimits All(double min, double max, double step) {
    return {Limits{min, max, step}, {}, {}, {}};
  }
  static constexpr BuiltInLimits Esi(double min, double max, double step) {
    return {{}, Limits{min, max, step}, {}, {}};
  }
  static constexpr BuiltInLimits Apci(double min, double max, double step) {
    return {{}, {}, Limits{min, max, step}, {}};
  }
  static constexpr BuiltInLimits Each(Limits esi, Limits apci) { return {{}, esi, apci, {}}; }
  // Without a step, and no site can change them.
  static constexpr BuiltInLimits Fixed(double min, double max) { return {{}, {}, {}, Limits{min, max, 0.0}}; }

  std::optional<Limits> all;
  std::optional<Limits> esi;
  std::optional<Limits> apci;
  std::optional<Limits> fixed;

 private:
  // Every row says what its limits are.
  constexpr BuiltInLimits(std::optional<Limits> ofAll, std::optional<Limits> ofEsi,
                          std::optional<Limits> ofApci, std::optional<Limits> fixedOnes)
      : all(ofAll), esi(ofEsi), apci(ofApci), fixed(fixedOnes) {}
};

enum class FieldUse {
  Set,          // a user sets it
  Ramp,         // a ramp may step it, too, to find its best value
  RampAndStep,  // and it may follow m/z during a scan
};

// The tunes that have a field.
enum class AppliesTo { Every, Esi, Apci, Scan, Sim };

// The sign that a voltage of an APCI source may have.
enum class ApciSign { Any, OfIons, AgainstIons };

// What the curve of a lens does beyond its first and last point.
enum class BeyondEnds { GoesOn, Level };

// The value in a new tune, for positive ions: a switch is 0 or 1, a lens has it as its single
// value.
struct NewValue {
  constexpr NewValue(double ofAll) : esi(ofAll), apci(ofAll) {}
  constexpr NewValue(double ofEsi, double ofApci) : esi(ofEsi), apci(ofApci) {}

  double esi;
  double apci;
};

// The values at the calibrants of a new tune, ascending in m/z; see DefaultQ1CalPts.
struct NewCurve {
  static constexpr std::size_t kPoints = 5;
  constexpr NewCurve(double a, double b, double c, double d, double e) : values{a, b, c, d, e} {}

  double values[kPoints];
};

// Values within the limits that the field does not take, both ends included.
struct Gap {
  std::uint32_t from;
  std::uint32_t to;

  constexpr bool Holds(std::uint32_t value) const { return from <= value && value <= to; }
};

struct FieldTraits {
  FieldUse use = FieldUse::Set;
  AppliesTo appliesTo = AppliesTo::Every;
  const wchar_t* unit = L"";
  bool followsPolarity = false;  // turns with the sign of the ions
  ApciSign apciSign = ApciSign::Any;
  std::optional<Gap> gap = {};
  // Of a field that may follow m/z.
  BeyondEnds beyondEnds = BeyondEnds::GoesOn;
  // The lens to whose absolute voltage this one is added; see FieldLimits::QMinMaxStep.
  std::optional<TuneField::Id> standsOn = {};
  std::optional<NewValue> newValue = {};
  std::optional<NewCurve> newCurve = {};
};

struct FieldRow {
  constexpr bool IsRampable() const { return traits.use != FieldUse::Set; }
  constexpr bool IsSteppable() const { return traits.use == FieldUse::RampAndStep; }
  // Null if the field is no lens.
  constexpr IOPoint Control::*Lens() const {
    const auto lens = std::get_if<IOPoint Control::*>(&place);
    return lens != nullptr ? *lens : nullptr;
  }

  TuneField::Id id;
  const wchar_t* tag;  // in documents; null for a field without one
  FieldPlace place;
  BuiltInLimits limits;
  FieldTraits traits = {};
};

}  // namespace TslBL
