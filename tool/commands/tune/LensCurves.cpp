#include <tool/commands/tune/LensCurves.h>

#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/Q1FieldConvert.h>
#include <tslbl/tune/Settling.h>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::Control;
using TslBL::IOPoint;
using TslBL::Tune;
using Id = TslBL::TuneField::Id;

constexpr LensField kLenses[] = {
    {"CapExit", Id::CapExit, &Control::CapExit, "V"},
    {"Skimmer", Id::Skimmer, &Control::Skimmer, "V"},
    {"Q0RFAmpl", Id::Q0RFAmpl, &Control::Q0RFAmpl, "V"},
    {"Q0Offset", Id::Q0Offset, &Control::Q0Offset, "V"},
    {"Q0Exit1", Id::Q0Exit1, &Control::Q0Exit1, "V"},
    {"Q0Exit2", Id::Q0Exit2, &Control::Q0Exit2, "V"},
    {"Q1Resolution", Id::Q1Resolution, &Control::Q1Resolution, "%"},
    {"Q1Offset", Id::Q1Offset, &Control::Q1Offset, "V"},
    {"Q1IonGuide", Id::Q1IonGuide, &Control::Q1IonGuide, "V"},
};

const IOPoint& LensOf(const Tune& tune, const LensField& field) { return tune.ControlData.*field.lens; }

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

std::span<const LensField> LensFields() { return kLenses; }

MZCurve LensCurve(const Tune& tune, const LensField& field) {
  const IOPoint& lens = LensOf(tune, field);
  if (lens.Type == IOPoint::SingleType) return [single = lens.Single](double) { return single; };
  const TslBL::Q1FieldConvert curve(tune.Q1CalPts, field.id);
  if (curve.Empty()) return [](double) { return std::nullopt; };
  return [curve](double mz) { return Defined([&] { return curve.MZToFieldVal(mz); }); };
}

std::vector<std::pair<double, double>> LensPoints(const Tune& tune, const LensField& field) {
  std::vector<std::pair<double, double>> points;
  if (LensOf(tune, field).Type == IOPoint::SingleType) return points;
  for (const TslBL::Q1CalPt& point : tune.Q1CalPts) {
    const auto entry = point.Fields.find(field.id);
    if (entry != point.Fields.end()) points.emplace_back(point.MZ, entry->second);
  }
  std::ranges::sort(points);
  return points;
}

MZCurve SettlingCurve(const Tune& tune) {
  const double low = TslBL::QMassRange(tune).first;
  const IOPoint& lens = tune.ControlData.CapExit;
  const bool isSingle = lens.Type == IOPoint::SingleType;
  // A lens of one value does not change on the way.
  const TslBL::Q1FieldConvert curve(isSingle ? std::vector<TslBL::Q1CalPt>() : tune.Q1CalPts, Id::CapExit);
  return [low, curve](double mz) {
    return Defined(
        [&] { return TslBL::SettlingDelay(mz, low, curve.MZToFieldVal(mz) - curve.MZToFieldVal(low)); });
  };
}

}  // namespace TslTool
