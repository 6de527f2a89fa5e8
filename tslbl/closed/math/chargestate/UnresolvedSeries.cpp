#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>

#include <tslbl/closed/math/chargestate/SeriesMass.h>
#include <tslbl/closed/math/chargestate/SeriesSearch.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace TslMath {
namespace {

constexpr double kPpm = 1e-6;
constexpr double kMostChargeGiven = 1e6;

void Require(bool fact, const std::string& reason) {
  if (!fact) throw std::invalid_argument(reason);
}

std::string Text(double value) {
  std::string text = std::to_string(value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

void Check(const UnresolvedPrefs& prefs) {
  Require(std::isfinite(prefs.carrierMass), "The mass of the charge carrier is no number.");
  Require(std::isfinite(prefs.minMass) && prefs.minMass > 0.0, "The lowest mass must be above 0.");
  Require(std::isfinite(prefs.maxMass), "The highest mass is no number.");
  Require(prefs.minMass <= prefs.maxMass,
          "The lowest mass, " + Text(prefs.minMass) + ", is above the highest, " + Text(prefs.maxMass) + ".");
  Require(prefs.accuracy > 0.0 && prefs.accuracy * kPpm < 1.0 / 3.0,
          "The accuracy of m/z must be above 0 and below 300000 ppm.");
  Require(prefs.maxGaps >= 0, "The number of gaps must be 0 or more.");
}

UnresolvedPrefs Checked(UnresolvedPrefs prefs) {
  Check(prefs);
  prefs.minSeriesSize = std::max(prefs.minSeriesSize, 2);
  prefs.maxSeries = std::max(prefs.maxSeries, 0);
  return prefs;
}

}  // namespace

std::vector<ChargeSeries> FindAllSeries(std::span<const IonPeak> peaks, const UnresolvedPrefs& prefs) {
  return SeriesSearch(peaks, Checked(prefs)).All();
}

std::optional<ChargeSeries> FindSeriesOf(std::span<const IonPeak> peaks, const UnresolvedPrefs& prefs,
                                         std::span<const std::size_t> seeds) {
  return SeriesSearch(peaks, Checked(prefs)).Of(seeds);
}

std::optional<ChargeSeries> RecalculateSeries(std::span<const IonPeak> peaks, const UnresolvedPrefs& prefs,
                                              double mass, std::span<const std::size_t> members) {
  Check(prefs);
  ChargeSeries series;
  for (const std::size_t member : members) {
    const bool isThere =
        std::ranges::find(series.members, member, &SeriesMember::peak) != series.members.end();
    if (member >= peaks.size() || isThere) continue;
    const double charge = std::round(mass / (peaks[member].mz - prefs.carrierMass));
    if (!(charge >= 1.0 && charge <= kMostChargeGiven)) continue;
    series.members.push_back({static_cast<std::int32_t>(charge), member, 0.0, 0.0});
  }
  if (series.members.empty()) return std::nullopt;
  std::ranges::stable_sort(series.members, {}, &SeriesMember::charge);
  UpdateMass(peaks, prefs.carrierMass, series);
  return series;
}

}  // namespace TslMath
