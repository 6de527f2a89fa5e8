#include <tool/simulate/LensModel.h>

#include <tslbl/tune/FieldTable.h>
#include <algorithm>
#include <cmath>
#include <iterator>

namespace TslTool {
namespace {

using Field = TslBL::TuneField;
using TslCommon::PolarityTypes;

struct LensRow {
  Field::Id field;
  double at100;      // the best value at m/z 100
  double perDecade;  // what is added to it at ten times the m/z
  double spread;
};
constexpr LensRow kLenses[] = {
    {Field::CapExit, 105, 40, 45},     {Field::Skimmer, 24, 12, 12},      {Field::Q0RFAmpl, 450, 220, 200},
    {Field::Q0Offset, -14, -9, 10},    {Field::Q0Exit1, -0.4, 0, 1.5},    {Field::Q0Exit2, -90, 0, 40},
    {Field::Q1Offset, -1, -6, 5},      {Field::Q1IonGuide, -12, -8, 12},  {Field::Cylinder, -3300, 0, 1200},
    {Field::EndPlate, -4700, 0, 1500}, {Field::CapEnter, -5600, 0, 1800}, {Field::DryGasTemp, 220, 0, 90},
    {Field::DryGasFlow, 9, 0, 5},      {Field::Neb1GasPres, 45, 0, 30},
};

double Decades(double mz) { return std::log10(std::max(mz, 1.0) / 100.0); }

// 1 or -1, by which a voltage of this field is turned.
double SignOf(Field::Id field, PolarityTypes polarity) {
  const bool turned = TslBL::FindField(field)->traits.followsPolarity;
  return turned && polarity == TslCommon::PolarityNegative ? -1.0 : 1.0;
}

double BestOf(const LensRow& row, PolarityTypes polarity, double mz) {
  return SignOf(row.field, polarity) * (row.at100 + row.perDecade * Decades(mz));
}

const LensRow* FindLens(Field::Id field) {
  const auto row = std::ranges::find(kLenses, field, &LensRow::field);
  return row != std::end(kLenses) ? &*row : nullptr;
}

double Passing(const LensRow& row, PolarityTypes polarity, double value, double mz) {
  const double away = (value - BestOf(row, polarity, mz)) / row.spread;
  return std::exp(-0.5 * away * away);
}

double Seen(const TslBL::Control& control) {
  return (1.0 - std::exp(-std::abs(control.HEDynode) / 2500.0)) /
         (1.0 + std::exp((control.DetectorGain + 1300) / 60.0)) *
         std::exp(-static_cast<double>(control.SignalThreshold) / 150.0);
}

}  // namespace

LensModel::LensModel(const TslBL::Tune& tune)
    : polarity_(tune.ControlData.PolarityType),
      steady_(Seen(tune.ControlData)),
      resolution_(Resolution{{tune, Field::Q1Resolution}, {tune, Field::Q1CoarseResolution}}) {
  const bool isElectrospray = TslBL::IsAmong(tune, TslBL::AppliesTo::Esi);
  for (const LensRow& row : kLenses) {
    if (TslBL::FindField(row.field)->Lens() != nullptr) {
      lenses_.push_back({row.field, {tune, row.field}});
    } else if (isElectrospray) {
      steady_ *= Passing(row, polarity_, TslBL::FieldValue(tune, row.field).value(), 100.0);
    }
  }
}

double LensModel::Transmission(double mz) const {
  if (!resolution_) return 1.0;
  double passing = steady_;
  for (const Lens& lens : lenses_)
    passing *= Passing(*FindLens(lens.field), polarity_, lens.curve.At(mz), mz);
  const double width = Width(mz);
  return passing * width / (width + 0.5);
}

double LensModel::Width(double mz) const {
  if (!resolution_) return 1.0;
  const double resolved = resolution_->fine.At(mz) + resolution_->coarse.At(mz);
  return std::exp((25.0 - 30.0 * Decades(mz) - resolved) / 100.0);
}

std::optional<double> LensModel::BestValue(Field::Id field, PolarityTypes polarity, double mz) {
  const LensRow* row = FindLens(field);
  if (row == nullptr) return std::nullopt;
  return BestOf(*row, polarity, mz);
}

}  // namespace TslTool
