#include <tool/commands/decon/PeakShares.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace TslTool {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::CSSeriesPeakInfo;

constexpr double kNear = 4.0;  // charges, from one to the next of a series' own

bool IsUnresolved(const CSSeriesInfo& series) { return series.Series.Type == TslBL::CSSeries::Unresolved; }

// The logarithm of an intensity at a charge.
struct Known {
  double charge;
  double log;
};

double LineThrough(const Known& a, const Known& b, double charge) {
  return a.log + (b.log - a.log) * (charge - a.charge) / (b.charge - a.charge);
}

// `known` ascends by charge and holds two or more.
double LogAt(const std::vector<Known>& known, double charge) {
  const auto above = std::ranges::lower_bound(known, charge, {}, &Known::charge);
  if (above == known.begin()) return std::min(known[0].log, LineThrough(known[0], known[1], charge));
  const std::size_t last = known.size() - 1;
  if (above == known.end())
    return std::min(known[last].log, LineThrough(known[last - 1], known[last], charge));
  return LineThrough(above[-1], *above, charge);
}

bool IsBetween(const std::vector<Known>& known, double charge) {
  const auto above = std::ranges::lower_bound(known, charge, {}, &Known::charge);
  return above != known.begin() && above != known.end() && above->charge - above[-1].charge <= kNear;
}

}  // namespace

PeakShares::PeakShares(const TslBL::DeconSpectrum& spectrum, std::vector<double> intensities)
    : spectrum_(spectrum), intensities_(std::move(intensities)), owners_(intensities_.size(), 0) {
  for (const CSSeriesInfo& series : spectrum.Series) {
    shares_.emplace_back(series.Peaks.size(), 1.0);
    if (!IsUnresolved(series)) continue;
    for (const CSSeriesPeakInfo& member : series.Peaks) ++owners_.at(member.PeakId);
  }
  for (std::uint32_t id = 0; id < owners_.size(); ++id)
    if (IsShared(id)) Divide(id);
}

PeakShares::Expectation PeakShares::Expected(const CSSeriesInfo& series, std::uint32_t charge) const {
  std::vector<Known> known;
  for (const CSSeriesPeakInfo& member : series.Peaks)
    if (!IsShared(member.PeakId) && intensities_[member.PeakId] > 0.0)
      known.push_back({static_cast<double>(member.Charge), std::log(intensities_[member.PeakId])});
  if (known.size() < 2) return {std::numeric_limits<double>::quiet_NaN(), false};
  std::ranges::sort(known, {}, &Known::charge);
  return {std::exp(LogAt(known, charge)), IsBetween(known, charge)};
}

std::vector<PeakShares::Owner> PeakShares::OwnersOf(std::uint32_t peakId) {
  std::vector<Owner> owners;
  for (std::size_t i = 0; i < spectrum_.Series.size(); ++i) {
    const CSSeriesInfo& series = spectrum_.Series[i];
    if (!IsUnresolved(series)) continue;
    for (std::size_t k = 0; k < series.Peaks.size(); ++k)
      if (series.Peaks[k].PeakId == peakId)
        owners.push_back({&shares_[i][k], Expected(series, series.Peaks[k].Charge)});
  }
  return owners;
}

void PeakShares::Divide(std::uint32_t peakId) {
  const std::vector<Owner> owners = OwnersOf(peakId);
  const bool isAnyBetween =
      std::ranges::any_of(owners, [](const Owner& owner) { return owner.expectation.isBetween; });
  const auto isKnown = [isAnyBetween](const Owner& owner) {
    return isAnyBetween ? owner.expectation.isBetween : !std::isnan(owner.expectation.intensity);
  };
  double sum = 0.0;
  for (const Owner& owner : owners)
    if (isKnown(owner)) sum += owner.expectation.intensity;
  const auto unknown =
      static_cast<double>(owners.size()) - static_cast<double>(std::ranges::count_if(owners, isKnown));
  const double whole = unknown > 0.0 ? std::max(intensities_[peakId], sum) : sum;
  for (const Owner& owner : owners)
    *owner.share = isKnown(owner) ? owner.expectation.intensity / whole : (1.0 - sum / whole) / unknown;
}

}  // namespace TslTool
