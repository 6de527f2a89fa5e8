#pragma once
// Small methods for tests of what they acquire.

#include <optional>
#include <vector>

#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/rules/DevTuneRules.h>

namespace tests {

// A scan of 20 m/z or so at 0.1, 1 ms a step.
inline TslBL::Tune ShortTune(double low = 310.0, double high = 330.0,
                             TslCommon::PolarityTypes polarity = TslCommon::PolarityPositive) {
  TslBL::DevTuneRules tune(TslBL::Probes::ESI);
  tune.WMZLow(low);
  tune.WMZHi(high);
  tune.WPolarityType(polarity);
  tune.CalculateInitialSettlingDelay();
  return tune;
}

// One time period with one item of one spectrum, that has no end and is gone through once.
inline TslBL::MethodRules OneSpectrum(const TslBL::Tune& tune = ShortTune()) {
  TslBL::MethodRules rules(0.5, tune, 1);
  rules.WTPTimeout(0, TslBL::MethodRules::FreeRun);
  rules.WTPNumLoops(0, 1);
  return rules;
}

struct WalkedLens {
  TslBL::TuneField::Id field;
  std::vector<double> values;
};

// The method of a ramp: a time period for each value of the first lens, an item for each value of the second
// one.
inline TslBL::MethodRules Ramp(const TslBL::Tune& tune, const WalkedLens& first, std::uint32_t records = 1,
                               const std::optional<WalkedLens>& second = {}) {
  TslBL::Method method;
  const auto with = [](TslBL::Tune changed, TslBL::TuneField::Id field, double value) {
    if (const auto lens = TslBL::FindField(field)->Lens()) {
      (changed.ControlData.*lens).Type = TslBL::IOPoint::SingleType;
      (changed.ControlData.*lens).Single = value;
    } else {
      changed.ControlData.DetectorGain = static_cast<std::int32_t>(value);
    }
    return changed;
  };
  const auto add = [&](TslBL::TimePeriod& period, const TslBL::Tune& step) {
    const auto id = static_cast<std::uint32_t>(method.Tunes.size() + 1);
    method.Tunes[id] = step;
    method.TuneRuns[id] = TslBL::TuneRun(id, records);
    period.Sequence.push_back({id});
  };
  for (const double a : first.values) {
    TslBL::TimePeriod& period = method.TimePeriods.emplace_back();
    period.Loops = 1;
    period.Timeout = TslBL::MethodRules::FreeRun;
    if (!second) add(period, with(tune, first.field, a));
    if (!second) continue;
    for (const double b : second->values) add(period, with(with(tune, first.field, a), second->field, b));
  }
  return TslBL::MethodRules(0.5, method);
}

}  // namespace tests
