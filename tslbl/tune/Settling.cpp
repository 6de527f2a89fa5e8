#include <tslbl/tune/Settling.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/LensCurve.h>
#include <tslbl/tune/MassRange.h>
#include <algorithm>
#include <cmath>

namespace TslBL {
namespace {

// One microsecond for each m/z, and a fixed part that grows until it levels off.
std::int32_t MassAxisSettling(double span) {
  if (span < 0.001) return 0;
  return Truncate<std::int32_t>(span + std::min(span * 0.5 + 500.0, 800.0));
}

// The supply follows small steps at once; of larger ones it takes each volt in turn, until
// it slews at its limit.
std::int32_t LensSettling(double volts) {
  if (volts < 40.0) return 0;
  if (volts > 80.0) return 5000;
  return Truncate<std::int32_t>((volts - 40.0) * 125.0);
}

}  // namespace

std::uint32_t SettlingDelay(double high, double low, double capExitChange) {
  return static_cast<std::uint32_t>(
      std::max(MassAxisSettling(std::abs(high - low)), LensSettling(std::abs(capExitChange))));
}

std::uint32_t SettlingDelay(const Tune& tune) {
  const auto [low, high] = QMassRange(tune);
  const LensCurve capExit(tune, TuneField::CapExit);
  return SettlingDelay(high, low, capExit.At(high) - capExit.At(low));
}

double CapExitAt(const Tune& tune, double mz) { return LensCurve(tune, TuneField::CapExit).At(mz); }

}  // namespace TslBL
