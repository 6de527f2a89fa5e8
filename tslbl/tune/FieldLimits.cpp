#include <tslbl/tune/FieldLimits.h>

#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/LimitOverrides.h>
#include <array>
#include <atomic>
#include <optional>

namespace {

using TslBL::FieldRow;
using TslBL::FindField;
using TslBL::kFieldTable;
using TslBL::LimitRows;
using TslBL::TuneField;
using TslCommon::Probes;

// By field number; nothing for a field without limits here.
using Rows = std::array<std::optional<Limits>, TuneField::kFieldCount>;

// A site changes what there is, and adds nothing.
Rows Overridden(std::optional<Limits> TslBL::BuiltInLimits::*table, const LimitRows& overrides) {
  Rows rows;
  for (const FieldRow& field : kFieldTable) {
    const std::optional<Limits>& builtIn = field.limits.*table;
    const auto found = overrides.find(field.id);
    rows[field.id] = builtIn && found != overrides.end() ? found->second : builtIn;
  }
  return rows;
}

struct Tables {
  explicit Tables(const LimitRows& overrides)
      : all(Overridden(&TslBL::BuiltInLimits::all, overrides)),
        esi(Overridden(&TslBL::BuiltInLimits::esi, overrides)),
        apci(Overridden(&TslBL::BuiltInLimits::apci, overrides)) {}

  const Rows* OfProbe(Probes::ProbeTypes probe) const {
    switch (probe) {
      case Probes::ESI:
      case Probes::LowFlowESI:
        return &esi;
      case Probes::APCI:
        return &apci;
    }
    return nullptr;
  }

  Rows all;
  Rows esi;
  Rows apci;
};

std::wstring OverridesPath() { return TslCommon::ModuleFolder(TslCommon::ModuleHandle()) + L"overrides.txt"; }

// Called first by whoever asks for limits first. If the log throws, the limits of the site count all the
// same.
void LogOnce() {
  static std::atomic<bool> done{false};
  if (!done.load(std::memory_order_relaxed) && !done.exchange(true)) TslBL::LogOverrides(OverridesPath());
}

const Tables& SiteTables() {
  struct Site {
    explicit Site(const std::optional<LimitRows>& overrides)
        : isFound(overrides), tables(overrides.value_or(LimitRows())) {}

    bool isFound;
    Tables tables;
  };
  static const Site site(TslBL::LoadLimitOverrides(OverridesPath()));
  if (site.isFound) LogOnce();
  return site.tables;
}

const std::optional<Limits>* Find(const Rows* rows, int field) {
  const auto number = static_cast<std::uint32_t>(field);
  return rows != nullptr && number < rows->size() ? &(*rows)[number] : nullptr;
}

// The absolute voltage of a lens starts from that of the lens that it stands on.
void AddBases(const FieldRow& lens, Limits& limits) {
  if (!lens.traits.standsOn) return;
  const FieldRow& base = kFieldTable[*lens.traits.standsOn];
  AddBases(base, limits);
  const Limits added = FieldLimits().QLimits(static_cast<int>(base.id));
  limits.Min += added.Min;
  limits.Max += added.Max;
}

}  // namespace

Limits FieldLimits::QLimits(int field) const {
  const std::optional<Limits>* row = Find(&SiteTables().all, field);
  return row != nullptr ? row->value_or(Limits{}) : Limits{};
}

Limits FieldLimits::QLimits(Probes::ProbeTypes probe, int field) const {
  const std::optional<Limits>* row = Find(SiteTables().OfProbe(probe), field);
  return row != nullptr && *row ? **row : QLimits(field);
}

Limits FieldLimits::QMinMaxStep(int field) const {
  Limits limits = QLimits(field);
  if (const FieldRow* row = FindField(static_cast<TuneField::Id>(field))) AddBases(*row, limits);
  return limits;
}
