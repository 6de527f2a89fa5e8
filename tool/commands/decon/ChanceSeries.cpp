#include <tool/commands/decon/ChanceSeries.h>

#include <tool/commands/decon/DropSeries.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace TslTool {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::DeconSpectrum;

// No ratio of two small charges, and several, as the noise of a sampled curve stands at multiples of a step.
constexpr double kStretches[] = {1.0 / 1.2, 0.957, 1.043, 1.0 / 0.9};

constexpr double kMostOfChance = 0.05;  // of the series that are as good

bool IsResolved(const CSSeriesInfo& series) { return series.Series.Type == TslBL::CSSeries::Resolved; }

struct Worth {
  std::size_t peaks;
  double intensity;
};

// A list has one number for a peak, its area.
double IntensityOf(const DeconSpectrum& spectrum, const TslBL::CSSeriesPeakInfo& member) {
  const std::uint32_t peaks = spectrum.QNumPeaks();
  const std::uint32_t data =
      member.PeakId < peaks ? member.PeakId : spectrum.overlapPeaks.at(member.PeakId - peaks).DataPeakId;
  return spectrum.peaks.at(data).area;
}

Worth WorthOf(const DeconSpectrum& spectrum, const CSSeriesInfo& series) {
  Worth worth{series.Peaks.size(), 0.0};
  for (const TslBL::CSSeriesPeakInfo& member : series.Peaks) worth.intensity += IntensityOf(spectrum, member);
  return worth;
}

// Which series has a peak, by peak id.
using Owners = std::unordered_map<std::uint32_t, std::size_t>;

Owners OwnersOf(const DeconSpectrum& spectrum) {
  Owners owners;
  for (std::size_t i = 0; i < spectrum.Series.size(); ++i)
    if (IsResolved(spectrum.Series[i]))
      for (const TslBL::CSSeriesPeakInfo& member : spectrum.Series[i].Peaks) owners[member.PeakId] = i;
  return owners;
}

// Half of its peaks and more are those of one true series that has as many.
bool IsPartOf(const DeconSpectrum& spectrum, const Owners& owners, const CSSeriesInfo& chance) {
  std::unordered_map<std::size_t, std::size_t> shared;
  for (const TslBL::CSSeriesPeakInfo& member : chance.Peaks)
    if (const auto owner = owners.find(member.PeakId); owner != owners.end()) ++shared[owner->second];
  return std::ranges::any_of(shared, [&](const auto& share) {
    return 2 * share.second >= chance.Peaks.size() &&
           spectrum.Series[share.first].Peaks.size() >= chance.Peaks.size();
  });
}

DeconSpectrum Stretched(const DeconSpectrum& spectrum, double factor) {
  DeconSpectrum stretched = spectrum;
  stretched.CSSeriesClear();
  for (double& mz : stretched.xAxis) mz *= factor;
  return stretched;
}

std::vector<Worth> WorthsOfChance(const DeconSpectrum& spectrum,
                                  const std::function<void(DeconSpectrum&)>& search) {
  const Owners owners = OwnersOf(spectrum);
  std::vector<Worth> worths;
  for (const double factor : kStretches) {
    DeconSpectrum stretched = Stretched(spectrum, factor);
    search(stretched);
    for (const CSSeriesInfo& series : stretched.Series)
      if (!IsPartOf(spectrum, owners, series)) worths.push_back(WorthOf(stretched, series));
  }
  return worths;
}

bool IsAsGood(const Worth& worth, const Worth& least) {
  return worth.peaks >= least.peaks && worth.intensity >= least.intensity;
}

double CountOf(const std::vector<Worth>& worths, const Worth& least) {
  return static_cast<double>(
      std::ranges::count_if(worths, [&](const Worth& worth) { return IsAsGood(worth, least); }));
}

// The least of the found series that chance makes too seldom to be taken for it; what is as good stays with
// them.
std::vector<Worth> LeastTrue(const std::vector<Worth>& found, const std::vector<Worth>& chances) {
  std::vector<Worth> least;
  for (const Worth& worth : found)
    if (CountOf(chances, worth) <= kMostOfChance * std::size(kStretches) * CountOf(found, worth))
      least.push_back(worth);
  return least;
}

}  // namespace

std::size_t DropChanceSeries(DeconSpectrum& spectrum, const std::function<void(DeconSpectrum&)>& search) {
  std::vector<Worth> found;
  for (const CSSeriesInfo& series : spectrum.Series)
    if (IsResolved(series)) found.push_back(WorthOf(spectrum, series));
  if (found.empty()) return 0;
  const std::vector<Worth> least = LeastTrue(found, WorthsOfChance(spectrum, search));
  const std::size_t before = spectrum.Series.size();
  DropSeries(spectrum, [&](const CSSeriesInfo& series) {
    const Worth worth = WorthOf(spectrum, series);
    return IsResolved(series) &&
           std::ranges::none_of(least, [&](const Worth& one) { return IsAsGood(worth, one); });
  });
  return before - spectrum.Series.size();
}

}  // namespace TslTool
