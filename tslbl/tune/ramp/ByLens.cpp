#include <tslbl/tune/ramp/ByLens.h>

#include <tslbl/closed/common/Truncate.h>
#include <cmath>

namespace TslBL {

void ByLensFct::AddMassValue(double mz, double value) {
  if (std::isnan(mz)) return;
  RemoveNearbyPoints(mz);
  lens_.Values.insert({mz, value});
}

void ByLensFct::RemoveNearbyPoints(double mz) {
  if (std::isnan(mz)) return;
  auto& values = lens_.Values;
  const auto first = values.lower_bound(mz - kTolerance);
  if (first == values.end() || std::abs(first->first - mz) > kTolerance) return;
  // Above, a calibrant reaches up to its heavier isotopes.
  values.erase(first, values.upper_bound(mz + kTolerance + 1.0));
}

void ByLensFct::RemoveNominalMass(std::int32_t mass) {
  const auto first = lens_.Values.upper_bound(mass);
  if (first != lens_.Values.end() && Truncate<std::int32_t>(first->first) == mass) lens_.Values.erase(first);
}

void ByLensFct::KeepNominalMasses(const std::set<std::int32_t>& masses) {
  std::map<double, double> kept;
  for (const std::int32_t mass : masses) {
    const auto first = lens_.Values.lower_bound(mass);
    if (first != lens_.Values.end() && Truncate<std::int32_t>(first->first) == mass) kept.insert(*first);
  }
  lens_.Values = std::move(kept);
}

}  // namespace TslBL
