#include <tslbl/closed/math/chargestate/RankedPeaks.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/chargestate/PlaceCounts.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace TslMath {
namespace {

constexpr double kMostMz = 1e6;
constexpr double kLeastDistance = 0.01;     // m/z
constexpr double kDistanceInWindow = 0.02;  // of the window
constexpr double kLeastNeighbourhood = 50.0;
constexpr double kNeighbourhoodInRange = 0.12;
constexpr double kLeastSpan = 20.0;    // m/z, over which peaks are counted
constexpr double kLikeStrength = 0.7;  // of the logarithms
constexpr double kFaintShare = 0.05;

bool IsUsable(const IonPeak& peak, double carrierMass) {
  return peak.mz > std::max(0.0, carrierMass) && peak.mz <= kMostMz && peak.intensity > 0.0 &&
         std::isfinite(peak.intensity);
}

}  // namespace

RankedPeaks::RankedPeaks(std::span<const IonPeak> peaks, double carrierMass, double window) {
  Take(peaks, carrierMass, window);
  if (peaks_.empty()) return;
  BuildIndex();
  CountAlike();
  std::vector<double> intensities;
  for (const RankedPeak& peak : peaks_) intensities.push_back(peak.logIntensity);
  logFaint_ = Quantile(std::move(intensities), kFaintShare);
}

void RankedPeaks::Take(std::span<const IonPeak> peaks, double carrierMass, double window) {
  std::vector<std::size_t> rows(peaks.size());
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  std::erase_if(rows, [&](std::size_t row) { return !IsUsable(peaks[row], carrierMass); });
  std::ranges::stable_sort(rows, {}, [&](std::size_t row) { return peaks[row].mz; });
  for (const std::size_t row : rows) {
    const IonPeak& peak = peaks[row];
    const RankedPeak ranked{peak.mz, std::log(peak.mz), std::log(peak.intensity), 0.0, row};
    const double least = std::max(kLeastDistance, kDistanceInWindow * window * peak.mz);
    if (peaks_.empty() || peak.mz - peaks_.back().mz >= least)
      peaks_.push_back(ranked);
    else if (ranked.logIntensity > peaks_.back().logIntensity)
      peaks_.back() = ranked;
  }
}

void RankedPeaks::BuildIndex() {
  const double range = HighestMz() - LowestMz();
  const std::size_t cells = 2 * Count();
  cellsPerMz_ = range > 0.0 ? static_cast<double>(cells) / range : 0.0;
  cells_.assign(cells + 1, Count());
  for (std::size_t i = Count(); i-- > 0;)
    cells_[static_cast<std::size_t>((peaks_[i].mz - LowestMz()) * cellsPerMz_)] = i;
  for (std::size_t k = cells; k-- > 0;) cells_[k] = std::min(cells_[k], cells_[k + 1]);
}

std::size_t RankedPeaks::FirstFrom(double mz) const {
  if (!(mz > LowestMz())) return 0;
  if (mz > HighestMz()) return Count();
  const auto cell = static_cast<std::size_t>((mz - LowestMz()) * cellsPerMz_);
  const auto from = peaks_.begin() + static_cast<std::ptrdiff_t>(cells_[cell]);
  const auto to = cell + 1 < cells_.size() ? peaks_.begin() + static_cast<std::ptrdiff_t>(cells_[cell + 1])
                                           : peaks_.end();
  const auto below = [](const RankedPeak& peak, double place) { return peak.mz < place; };
  return static_cast<std::size_t>(std::lower_bound(from, to, mz, below) - peaks_.begin());
}

RankedPeaks::Stretch RankedPeaks::NearBy(std::size_t i) const {
  const double reach = std::max(kLeastNeighbourhood, kNeighbourhoodInRange * (HighestMz() - LowestMz()));
  const double from = std::max(LowestMz(), peaks_[i].mz - reach);
  const double to = std::min(HighestMz(), peaks_[i].mz + reach);
  const auto above = [](double mz, const RankedPeak& other) { return mz < other.mz; };
  const auto pastLast = std::upper_bound(peaks_.begin(), peaks_.end(), to, above) - peaks_.begin();
  return {FirstFrom(from), static_cast<std::size_t>(pastLast), std::max(to - from, kLeastSpan)};
}

// For each peak those near by whose logarithm is at least its own and `strength`.
std::vector<std::size_t> RankedPeaks::CountNearBy(const std::vector<std::size_t>& order,
                                                  double strength) const {
  PlaceCounts entered(Count());
  std::vector<std::size_t> counts(Count());
  std::size_t next = 0;
  for (const std::size_t i : order) {
    const double least = peaks_[i].logIntensity + strength;
    for (; next < order.size() && peaks_[order[next]].logIntensity >= least; ++next)
      entered.Enter(order[next]);
    const Stretch stretch = NearBy(i);
    counts[i] = entered.Between(stretch.first, stretch.pastLast);
  }
  return counts;
}

void RankedPeaks::CountAlike() {
  const std::vector<std::size_t> order = Strongest(Count());
  const std::vector<std::size_t> upward = CountNearBy(order, -kLikeStrength);
  const std::vector<std::size_t> stronger = CountNearBy(order, kLikeStrength);
  for (std::size_t i = 0; i < Count(); ++i) {
    const double alike = static_cast<double>(upward[i] - stronger[i]) + 0.5;
    peaks_[i].logAlike = std::log(alike / (2.0 * kLikeStrength * NearBy(i).span));
  }
}

std::vector<std::size_t> RankedPeaks::Strongest(std::size_t count) const {
  std::vector<std::size_t> order(Count());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, std::greater{}, [&](std::size_t i) { return peaks_[i].logIntensity; });
  order.resize(std::min(count, order.size()));
  return order;
}

std::size_t RankedPeaks::PlaceOf(std::size_t row) const {
  const auto found = std::ranges::find(peaks_, row, &RankedPeak::row);
  return static_cast<std::size_t>(found - peaks_.begin());
}

}  // namespace TslMath
