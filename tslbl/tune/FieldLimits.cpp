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

// By field number; zeros for a field without limits here.
using Rows = std::array<Limits, TuneField::kFieldCount>;

// A site changes what there is, and adds nothing. What a table lacks is that of `rows`.
Rows Overridden(std::optional<Limits> TslBL::BuiltInLimits::*table, const LimitRows& overrides, Rows rows) {
  for (const FieldRow& field : kFieldTable) {
    const std::optional<Limits>& builtIn = field.limits.*table;
    if (!builtIn) continue;
    const auto found = overrides.find(field.id);
    rows[field.id] = found != overrides.end() ? found->second : *builtIn;
  }
  return rows;
}

struct Tables {
  explicit Tables(const LimitRows& overrides)
      : all(Overridden(&TslBL::BuiltInLimits::all, overrides, {})),
        esi(Overridden(&TslBL::BuiltInLimits::esi, overrides, all)),
        apci(Overridden(&TslBL::BuiltInLimits::apci, overrides, all)) {}

  const Rows& OfProbe(Probes::ProbeTypes probe) const {
    switch (probe) {
      case Probes::ESI:
      case Probes::LowFlowESI:
        return esi;
      case Probes::APCI:
        return apci;
    }
    return all;
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

struct Site {
  explicit Site(const std::optional<LimitRows>& overrides)
      : isFound(overrides), tables(overrides.value_or(LimitRows())) {}

  bool isFound;
  Tables tables;
};

Site LoadSite() { return Site(TslBL::LoadLimitOverrides(OverridesPath())); }

const Tables& SiteTables() {
  static const Site site = LoadSite();
  if (site.isFound) LogOnce();
  return site.tables;
}

Limits Of(const Rows& rows, int field) {
  const auto number = static_cast<std::uint32_t>(field);
  return number < rows.size() ? rows[number] : Limits{};
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

Limits FieldLimits::QLimits(int field) const { return Of(SiteTables().all, field); }

Limits FieldLimits::QLimits(Probes::ProbeTypes probe, int field) const {
  return Of(SiteTables().OfProbe(probe), field);
}

Limits FieldLimits::QMinMaxStep(int field) const {
  Limits limits = QLimits(field);
  if (const FieldRow* row = FindField(static_cast<TuneField::Id>(field))) AddBases(*row, limits);
  return limits;
}
