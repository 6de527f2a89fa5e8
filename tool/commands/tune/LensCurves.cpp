#include <tool/commands/tune/LensCurves.h>

#include <tool/commands/tune/FindUserField.h>
#include <tslbl/tune/LensCurve.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/Settling.h>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::Tune;

// Two points of one m/z leave a curve open between them.
template <class Evaluate>
std::optional<double> Defined(Evaluate evaluate) {
  try {
    const double value = evaluate();
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
}

}  // namespace

std::span<const LensField> LensFields() {
  static const std::vector<LensField> lenses = [] {
    std::vector<LensField> made;
    for (const TslBL::TuneField::Id id : TslBL::kSteppableFields) {
      const UserField& field = *FindUserField(Tune(), id);
      made.push_back({field.name, UnitOf(field), id});
    }
    return made;
  }();
  return lenses;
}

MZCurve LensCurve(const Tune& tune, const LensField& field) {
  const TslBL::LensCurve lens(tune, field.id);
  if (lens.QCurve() != nullptr && lens.QCurve()->Empty()) return [](double) { return std::nullopt; };
  return [lens](double mz) { return Defined([&] { return lens.At(mz); }); };
}

std::vector<std::pair<double, double>> LensPoints(const Tune& tune, const LensField& field) {
  const TslBL::LensCurve lens(tune, field.id);
  std::vector<std::pair<double, double>> points;
  if (lens.QCurve() != nullptr) points = lens.QCurve()->QPoints();
  // Those of one m/z are in no order of their own.
  std::ranges::sort(points);
  return points;
}

MZCurve SettlingCurve(const Tune& tune) {
  const double low = TslBL::QMassRange(tune).first;
  const TslBL::LensCurve capExit(tune, TslBL::TuneField::CapExit);
  return [low, capExit](double mz) {
    return Defined([&] { return TslBL::SettlingDelay(mz, low, capExit.At(mz) - capExit.At(low)); });
  };
}

}  // namespace TslTool
