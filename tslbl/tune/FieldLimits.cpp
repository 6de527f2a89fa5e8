#include <tslbl/tune/FieldLimits.h>

#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/tune/LimitOverrides.h>
#include <tslbl/tune/TuneField.h>
#include <span>

namespace {

using TslBL::LimitRows;
using TslBL::TuneField;
using TslCommon::Probes;

struct Row {
  TuneField::Id field;
  Limits limits;
};

constexpr Row kCommon[] = {
    {TuneField::SourceType, {0, 7, 1}},
    {TuneField::EndPlateTemp, {0, 3, 1}},
    {TuneField::DryGasTemp, {25, 350, 5}},
    {TuneField::DryGasFlow, {2, 15, 0.1}},
    {TuneField::ControlType, {0, 1, 1}},
    {TuneField::MZ, {5, 3000, 0.05}},
    {TuneField::MZLow, {5, 3000, 0.05}},
    {TuneField::MZHi, {5, 3000, 0.05}},
    {TuneField::MZStepSize, {0.05, 2995, 0.05}},
    {TuneField::MassDAC, {0, 65535, 1}},
    {TuneField::PolarityType, {0, 1, 1}},
    {TuneField::InitSettleDelay, {0, 5000000, 1}},
    {TuneField::StepSettleDelay, {0, 4095, 1}},
    {TuneField::PulseCountDelayScan, {25, 2000000, 1}},
    {TuneField::PulseCountDelaySim, {10, 2000000, 1}},
    {TuneField::ScansPerSpec, {1, 65535, 1}},
    {TuneField::IOPointType, {0, 2, 1}},
    {TuneField::CapExit, {-400, 400, 1}},
    {TuneField::Skimmer, {-100, 100, 0.1}},
    {TuneField::Q0RFAmpl, {0, 800, 5}},
    {TuneField::Q0Offset, {-30, 30, 0.05}},
    {TuneField::Q0Exit1, {-200, 200, 0.1}},
    {TuneField::Q0Exit2, {-200, 200, 0.1}},
    {TuneField::HEDynode, {-10000, 10000, 10}},
    {TuneField::DetectorGain, {-3000, 0, 1}},
    {TuneField::SignalThreshold, {0, 255, 1}},
    {TuneField::Q1MZType, {0, 1, 1}},
    {TuneField::Q1Resolution, {-99, 99, 0.001}},
    {TuneField::Q1CoarseResolution, {-99, 99, 0.001}},
    {TuneField::Q1Offset, {-90, 90, 0.05}},
    {TuneField::Q1Enter, {0, 0, 0}},
    {TuneField::Q1IonGuide, {-100, 100, 0.1}},
};
constexpr Row kEsi[] = {
    {TuneField::Cylinder, {-6000, 6000, 1}},
    {TuneField::EndPlate, {-6000, 6000, 1}},
    {TuneField::CapEnter, {-6000, 6000, 1}},
    {TuneField::Neb1GasPres, {0, 100, 5}},
};
constexpr Row kApci[] = {
    {TuneField::EndPlate, {-5000, 5000, 1}},      {TuneField::CapEnter, {-5000, 5000, 1}},
    {TuneField::ApciVapTemp, {25, 350, 5}},       {TuneField::CoronaCurrent, {0, 20, 0.01}},
    {TuneField::CoronaVoltage, {-6000, 6000, 1}}, {TuneField::ApciAuxGas, {0, 60, 5}},
};

LimitRows Overridden(std::span<const Row> rows, const LimitRows& overrides) {
  LimitRows table;
  for (const Row& row : rows) {
    const auto found = overrides.find(row.field);
    table[row.field] = found != overrides.end() ? found->second : row.limits;
  }
  return table;
}

struct Tables {
  LimitRows common;
  LimitRows esi;
  LimitRows apci;

  const LimitRows* OfProbe(Probes::ProbeTypes probe) const {
    switch (probe) {
      case Probes::ESI:
      case Probes::LowFlowESI:
        return &esi;
      case Probes::APCI:
        return &apci;
    }
    return nullptr;
  }
};

const Tables& SiteTables() {
  static const Tables tables = [] {
    const LimitRows overrides =
        TslBL::LoadLimitOverrides(TslCommon::ModuleFolder(TslCommon::ModuleHandle()) + L"overrides.txt");
    return Tables{Overridden(kCommon, overrides), Overridden(kEsi, overrides), Overridden(kApci, overrides)};
  }();
  return tables;
}

const Limits* Find(const LimitRows* table, int field) {
  if (table == nullptr) return nullptr;
  const auto row = table->find(static_cast<std::uint32_t>(field));
  return row != table->end() ? &row->second : nullptr;
}

// The lenses whose voltages a relative lens stands on.
std::span<const TuneField::Id> BaseOf(int field) {
  static constexpr TuneField::Id kBases[] = {TuneField::Q0Offset, TuneField::Q1Offset};
  switch (field) {
    case TuneField::Q0Exit1:
    case TuneField::Q0Exit2:
    case TuneField::Q1Offset:
      return std::span(kBases).first<1>();
    case TuneField::Q1IonGuide:
      return kBases;
    default:
      return {};
  }
}

}  // namespace

Limits FieldLimits::QLimits(int field) const {
  const Limits* row = Find(&SiteTables().common, field);
  return row != nullptr ? *row : Limits{};
}

Limits FieldLimits::QLimits(Probes::ProbeTypes probe, int field) const {
  const Limits* row = Find(SiteTables().OfProbe(probe), field);
  return row != nullptr ? *row : QLimits(field);
}

Limits FieldLimits::QMinMaxStep(int field) const {
  Limits limits = QLimits(field);
  for (const TuneField::Id base : BaseOf(field)) {
    const Limits added = QLimits(static_cast<int>(base));
    limits.Min += added.Min;
    limits.Max += added.Max;
  }
  return limits;
}
