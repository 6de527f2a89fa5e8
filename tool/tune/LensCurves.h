#pragma once
// What the lenses of a tune do over m/z.

#include <tslbl/tune/Tune.h>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

struct LensField {
  const char* name;
  TslBL::TuneField::Id id;
  TslBL::IOPoint TslBL::Control::*lens;
  const char* unit;
};

// The lenses that can follow m/z.
std::span<const LensField> LensFields();

// The value of a lens at an m/z: its single value, or that of its curve. Nothing if the
// lens follows m/z without points, or where two points of one m/z leave the curve open.
std::optional<double> LensAt(const TslBL::Tune& tune, const LensField& field, double mz);

// The points of the lens's curve, if it follows one.
std::vector<std::pair<double, double>> LensPoints(const TslBL::Tune& tune, const LensField& field);

// The microseconds of rest that a move from the low end of the range to an m/z needs.
std::optional<double> SettlingTo(const TslBL::Tune& tune, double mz);

}  // namespace TslTool
