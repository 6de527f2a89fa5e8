#pragma once
// Small methods for tests of what they acquire.

#include <tslbl/method/MethodRules.h>
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

}  // namespace tests
