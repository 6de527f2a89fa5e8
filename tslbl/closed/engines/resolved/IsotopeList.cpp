#include <tslbl/closed/engines/resolved/IsotopeList.h>

#include <tslbl/closed/math/chargestate/PlaceCounts.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace TslMath {
namespace {

constexpr double kMostMzOfIsotopes = 1e6;
constexpr double kLeastIntensity = 1e-100;  // squares are finite, and above 0
constexpr double kLeastDistanceInWidth = 0.25;
constexpr double kLeastDistanceOfIsotopes = 1e-3;  // m/z
constexpr double kReachOfRivals = 60.0;            // m/z
constexpr double kLeastSpanOfRivals = 20.0;        // m/z

bool IsUsable(const IonPeak& peak, const ResolvedPrefs& prefs) {
  return peak.mz > std::max(0.0, prefs.carrierMass) && peak.mz <= kMostMzOfIsotopes &&
         peak.intensity >= kLeastIntensity && peak.intensity <= 1.0 / kLeastIntensity &&
         peak.signalToNoise >= prefs.leastSignalToNoise && peak.resolution >= prefs.lowestResolution &&
         peak.resolution <= prefs.highestResolution;
}

ListedPeak Listed(const IonPeak& peak, const ResolvedPrefs& prefs, std::size_t row) {
  const double massAtOne = peak.mz - prefs.carrierMass;
  const double noise = peak.signalToNoise > 0.0 ? peak.intensity / peak.signalToNoise : 0.0;
  return {peak.mz, massAtOne, std::log(massAtOne), peak.intensity, noise * prefs.leastSignalToNoise,
          0.0,     row};
}

}  // namespace

IsotopeList::IsotopeList(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs) {
  std::vector<std::size_t> rows(peaks.size());
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  std::erase_if(rows, [&](std::size_t row) { return !IsUsable(peaks[row], prefs); });
  std::ranges::stable_sort(rows, {}, [&](std::size_t row) { return peaks[row].mz; });
  for (const std::size_t row : rows) {
    const ListedPeak listed = Listed(peaks[row], prefs, row);
    const double width = listed.mz / std::max(prefs.highestResolution, 1.0);
    const double least = std::max(kLeastDistanceOfIsotopes, kLeastDistanceInWidth * width);
    if (peaks_.empty() || listed.mz - peaks_.back().mz >= least)
      peaks_.push_back(listed);
    else if (listed.intensity > peaks_.back().intensity)
      peaks_.back() = listed;
  }
  CountRivals();
}

void IsotopeList::CountRivals() {
  std::vector<std::size_t> order(Count());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, std::greater{}, [&](std::size_t i) { return peaks_[i].intensity; });
  PlaceCounts entered(Count());
  std::size_t next = 0;
  for (const std::size_t i : order) {
    ListedPeak& peak = peaks_[i];
    for (; next < order.size() && peaks_[order[next]].intensity >= peak.intensity; ++next)
      entered.Enter(order[next]);
    const double from = std::max(peaks_.front().mz, peak.mz - kReachOfRivals);
    const double to = std::min(peaks_.back().mz, peak.mz + kReachOfRivals);
    const auto rivals =
        static_cast<double>(entered.Between(FirstFrom(from), FirstFrom(std::nextafter(to, 2.0 * to))));
    peak.logRivals = std::log((rivals + 0.5) / std::max(to - from, kLeastSpanOfRivals));
  }
}

std::size_t IsotopeList::FirstFrom(double mz) const {
  return static_cast<std::size_t>(std::ranges::lower_bound(peaks_, mz, {}, &ListedPeak::mz) - peaks_.begin());
}

std::size_t IsotopeList::PlaceOf(std::size_t row) const {
  return static_cast<std::size_t>(std::ranges::find(peaks_, row, &ListedPeak::row) - peaks_.begin());
}

}  // namespace TslMath
