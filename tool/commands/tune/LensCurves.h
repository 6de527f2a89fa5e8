#pragma once
// What the lenses of a tune do over m/z.

#include <tslbl/tune/Tune.h>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

struct LensField {
  std::string name;
  std::string unit;
  TslBL::TuneField::Id id;
};

// The lenses that can follow m/z.
std::span<const LensField> LensFields();

// A value over m/z; nothing where there is none.
using MZCurve = std::function<std::optional<double>(double mz)>;

// The value of a lens: its single value, or that of its curve. Nothing if the lens follows
// m/z without points, or where two points of one m/z leave the curve open.
MZCurve LensCurve(const TslBL::Tune& tune, const LensField& field);

// The points of the lens's curve, if it follows one, ascending in m/z and then in value.
std::vector<std::pair<double, double>> LensPoints(const TslBL::Tune& tune, const LensField& field);

// The microseconds of rest that a move from the low end of the range to an m/z needs.
MZCurve SettlingCurve(const TslBL::Tune& tune);

}  // namespace TslTool
