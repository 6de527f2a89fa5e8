// Where the charges of a series stand on the m/z axis.

#include <tslbl/chargestate/DeconSpectrum.h>

#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <limits>
#include <set>

namespace TslBL {
namespace {

constexpr std::int64_t kMostCharges = 100'000;

struct Ladder {
  double mass;    // average mass of the series
  double adduct;  // mass of the ion that carries each charge

  double At(std::int64_t charge) const {
    return charge == 0 ? 0.0 : mass / static_cast<double>(charge) + adduct;
  }
};

struct Charges {
  std::int64_t low = 0;
  std::int64_t high = 0;
};

Charges ChargesOf(const std::set<std::uint32_t>& found) {
  if (found.empty()) return {};
  return {*found.begin(), *found.rbegin()};
}

// Up to two charges more at each end, as far as they stand on the axis. A lower charge stands at a higher
// m/z. On no axis nothing stands.
Charges Extended(Charges charges, const Ladder& ladder, const std::vector<double>& axis) {
  if (axis.empty()) return charges;
  for (int step = 0; step < 2; ++step)
    if (charges.low > 1 && ladder.At(charges.low - 1) <= axis.back()) --charges.low;
  if (ladder.At(charges.high + 2) >= axis.front()) {
    charges.high += 2;
  } else if (ladder.At(charges.high + 1) >= axis.front()) {
    charges.high += 1;
  }
  return charges;
}

}  // namespace

bool DeconSpectrum::BuildCSPeakIndictors(std::uint32_t index, CSPeakIndicators& out) const {
  out = {};
  if (index >= Series.size()) return false;
  const CSSeriesInfo& series = Series[index];
  std::set<std::uint32_t> found;
  for (const CSSeriesPeakInfo& peak : series.Peaks) found.insert(peak.Charge);

  const AdductIonInfo ion = CSParams.GetAdductIonInfo();
  const bool isUnresolved = series.Series.Type == CSSeries::Unresolved;
  const Ladder ladder{series.AvgMass, isUnresolved ? ion.AvgMass : ion.MonoMass};
  const Charges charges = Extended(ChargesOf(found), ladder, xAxis);
  if (charges.high - charges.low > kMostCharges) return false;

  out.Series = series.Series;
  for (std::int64_t charge = charges.low; charge <= charges.high; ++charge) {
    const auto number = static_cast<std::uint32_t>(charge);
    out.Indicators.push_back({number, ladder.At(charge), found.contains(number), L"|t+" + ToText(number)});
  }
  return true;
}

}  // namespace TslBL
