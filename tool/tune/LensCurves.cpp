#include <tool/tune/LensCurves.h>

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

}  // namespace

std::span<const LensField> LensFields() { return kLenses; }

std::optional<double> LensAt(const Tune& tune, const LensField& field, double mz) {
  const IOPoint& lens = LensOf(tune, field);
  if (lens.Type == IOPoint::SingleType) return lens.Single;
  double value = 0.0;
  std::wstring ignored;
  try {
    const TslBL::Q1FieldConvert curve(tune.Q1CalPts, field.id);
    if (!curve.MZToFieldVal(mz, value, ignored)) return std::nullopt;
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
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

std::optional<double> SettlingTo(const Tune& tune, double mz) {
  const double low = TslBL::QMassRange(tune).first;
  try {
    return TslBL::SettlingDelay(mz, low, TslBL::CapExitAt(tune, mz) - TslBL::CapExitAt(tune, low));
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
}

}  // namespace TslTool
