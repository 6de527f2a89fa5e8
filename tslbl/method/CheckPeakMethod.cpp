#include <tslbl/method/CheckPeakMethod.h>

#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <stdexcept>

namespace TslBL {
namespace {

Tune ScanAround(double mz, const Tune& tune) {
  DevTuneRules rules(tune);
  rules.WMZLow(mz - 10.0);
  rules.WMZHi(mz + 10.0);
  rules.WMZStepSize(0.1);
  return rules;
}

}  // namespace

Method CheckPeakMethod(const std::set<double>& mzs, const Tune& tune) {
  if (mzs.empty()) throw std::invalid_argument("CheckPeakMethod: there is no m/z to look at.");
  // All tunes are of one polarity, which never changes.
  MethodRules rules(0.0, ScanAround(*mzs.begin(), tune), 1);
  rules.WTPTimeout(0, MethodRules::FreeRun);
  rules.WTPNumLoops(0, 1);
  for (auto mz = std::next(mzs.begin()); mz != mzs.end(); ++mz) {
    const std::uint32_t si = rules.InsertSeqItem(0);
    rules.WTRTune(0, si, 0, ScanAround(*mz, tune));
    rules.WTRNumRecs(0, si, 0, 1);
  }
  return rules.operator Method();
}

}  // namespace TslBL
