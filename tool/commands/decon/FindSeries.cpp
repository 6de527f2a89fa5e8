#include <tool/commands/decon/FindSeries.h>

#include <tool/commands/decon/ChanceSeries.h>
#include <tool/commands/decon/DropSeries.h>
#include <tool/commands/decon/WideMembers.h>
#include <tslbl/chargestate/CSDecon.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/chargestate/MassPlot.h>
#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

using TslBL::ChargeStateParams;
using TslBL::CSSeriesInfo;
using TslBL::DeconSpectrum;

// Below this m/z no protein or nucleic acid carries a row of charges, and peaks of small molecules at each
// nominal mass have places for hundreds of them.
constexpr double kLeastMzOfCharges = 350.0;
// Standard deviation of the places of a series, relative to m/z: chance takes what the window holds, evenly.
constexpr double kMostScatter = 280e-6;
constexpr double kMostOfWidth = 0.1;  // noise and adducts move wide peaks by more

double WidthOf(const DeconSpectrum& spectrum, const TslBL::PeakInfo& peak) {
  return spectrum.FractionalIndexToXAxisVal(peak.halfHeightRightIdx) -
         spectrum.FractionalIndexToXAxisVal(peak.halfHeightLeftIdx);
}

// The median of the data peaks of a series, relative to m/z; 0 of a list, which tells none.
double WidthOf(const DeconSpectrum& spectrum, const CSSeriesInfo& series) {
  std::vector<double> widths;
  for (const TslBL::CSSeriesPeakInfo& peak : series.Peaks)
    if (peak.PeakId < spectrum.peaks.size() && !spectrum.xAxis.empty())
      widths.push_back(WidthOf(spectrum, spectrum.peaks[peak.PeakId]) / peak.MZ);
  return widths.empty() ? 0.0 : TslMath::Median(std::move(widths));
}

// Of so heavy a molecule, or one of so many charges, the third isotope has half of the highest and more: two
// peaks alone are of something else.
constexpr double kMassOfThreeIsotopes = 1800.0;
constexpr std::uint32_t kChargeOfThreeIsotopes = 6;

bool IsNoPattern(const CSSeriesInfo& series) {
  return series.Series.Type == TslBL::CSSeries::Resolved && series.Peaks.size() <= 2 &&
         (series.AvgMass >= kMassOfThreeIsotopes || series.Peaks.front().Charge >= kChargeOfThreeIsotopes);
}

bool IsScattered(const DeconSpectrum& spectrum, const CSSeriesInfo& series) {
  const double most = std::max(kMostScatter, kMostOfWidth * WidthOf(spectrum, series));
  return series.Series.Type == TslBL::CSSeries::Unresolved && series.StdDev > most * series.AvgMass;
}

// The library fails where it finds nothing, with texts of its own; for a run of many scans that is a result.
bool FoundNothing(const DeconSpectrum& spectrum) { return spectrum.Series.empty(); }

void SearchAll(DeconSpectrum& spectrum, ChargeStateParams::Methods method) {
  const ChargeStateParams params = spectrum.CSParams;
  spectrum.CSParams.Method = method;
  if (method == ChargeStateParams::UnresolvedOnly && params.FullRange) {
    spectrum.CSParams.FullRange = false;
    spectrum.CSParams.StartMz = kLeastMzOfCharges;
    spectrum.CSParams.EndMz = std::numeric_limits<double>::max();
  }
  TslBL::Changed changed;
  std::wstring error;
  const bool isDone = TslBL::DoCSDecon(spectrum, changed, error);
  spectrum.CSParams = params;
  spectrum.CSParams.Method = method;
  if (!isDone && !FoundNothing(spectrum)) throw std::runtime_error(TslCommon::ToUtf8(error));
  spectrum.AddStatus(TslBL::Curve::STATUS_CSDECON);
  DropSeries(spectrum, [&](const CSSeriesInfo& series) {
    return IsScattered(spectrum, series) || IsNoPattern(series);
  });
}

// Returns how many series chance makes as well.
std::size_t Search(DeconSpectrum& spectrum, ChargeStateParams::Methods method, bool isList) {
  SearchAll(spectrum, method);
  if (!isList) DropWideMembers(spectrum);
  if (!isList || method != ChargeStateParams::ResolvedOnly) return 0;
  return DropChanceSeries(spectrum, [&](DeconSpectrum& other) { SearchAll(other, method); });
}

// The peaks that no series has, and the ids that they have in the whole spectrum.
struct Rest {
  DeconSpectrum spectrum;
  std::vector<std::uint32_t> ids;
};

// By spectrum peak ids.
std::vector<bool> OwnedPeaks(const DeconSpectrum& spectrum) {
  std::vector<bool> owned(spectrum.peaks.size() + spectrum.overlapPeaks.size(), false);
  for (const CSSeriesInfo& series : spectrum.Series)
    for (const TslBL::CSSeriesPeakInfo& peak : series.Peaks)
      if (peak.PeakId < owned.size()) owned[peak.PeakId] = true;
  return owned;
}

// The data peak under an overlap peak stays: no series has it.
Rest RestOf(const DeconSpectrum& spectrum) {
  const std::vector<bool> owned = OwnedPeaks(spectrum);
  Rest rest{spectrum, {}};
  rest.spectrum.CSSeriesClear();
  rest.spectrum.peaks.clear();
  rest.spectrum.overlapPeaks.clear();
  std::vector<std::uint32_t> newPlaces(spectrum.peaks.size());
  for (std::uint32_t i = 0; i < spectrum.QNumPeaks(); ++i) {
    newPlaces[i] = rest.spectrum.QNumPeaks();
    if (owned[i]) continue;
    rest.spectrum.peaks.push_back(spectrum.peaks[i]);
    rest.ids.push_back(i);
  }
  for (std::uint32_t i = 0; i < spectrum.QNumOverlappedPeaks(); ++i) {
    if (owned[spectrum.QNumPeaks() + i]) continue;
    TslBL::OverlapPeakInfo peak = spectrum.overlapPeaks[i];
    peak.DataPeakId = newPlaces.at(peak.DataPeakId);
    rest.spectrum.overlapPeaks.push_back(peak);
    rest.ids.push_back(spectrum.QNumPeaks() + i);
  }
  return rest;
}

TslMath::MassCurve CurveOf(const DeconSpectrum& spectrum) { return {spectrum.MassX, spectrum.MassY}; }

void TakeOver(Rest& rest, DeconSpectrum& spectrum) {
  for (CSSeriesInfo& series : rest.spectrum.Series) {
    for (TslBL::CSSeriesPeakInfo& peak : series.Peaks) peak.PeakId = rest.ids.at(peak.PeakId);
    spectrum.CSAddSeries(series.Series.Type, series.AvgMass, series.StdDev, series.Peaks);
  }
  const TslMath::MassCurve parts[] = {CurveOf(spectrum), CurveOf(rest.spectrum)};
  TslMath::MassCurve sum = TslMath::SumOfCurves(parts);
  spectrum.MassX = std::move(sum.mass);
  spectrum.MassY = std::move(sum.density);
}

double IntensityOf(const DeconSpectrum& spectrum) {
  const std::vector<bool> owned = OwnedPeaks(spectrum);
  double sum = 0.0;
  for (std::size_t i = 0; i < spectrum.peaks.size(); ++i)
    if (owned[i]) sum += spectrum.peaks[i].area;
  return sum;
}

bool HasUnseenIsotopes(const CSSeriesInfo& series, std::uint32_t highestSeen) {
  return std::ranges::any_of(series.Peaks, [&](const auto& peak) { return peak.Charge > highestSeen; });
}

std::size_t SearchRest(DeconSpectrum& spectrum, ChargeStateParams::Methods second, bool isList) {
  Rest rest = RestOf(spectrum);
  const std::size_t ofChance = Search(rest.spectrum, second, isList);
  if (second == ChargeStateParams::UnresolvedOnly)
    DropSeries(rest.spectrum, [&](const CSSeriesInfo& series) {
      return !HasUnseenIsotopes(series, spectrum.CSParams.Resolved.MaxCS);
    });
  TakeOver(rest, spectrum);
  return ofChance;
}

struct First {
  ChargeStateParams::Methods method;
  std::size_t ofChance;
};

First SearchFirst(DeconSpectrum& spectrum, Order order) {
  if (order != Order::OfList) {
    const auto method =
        order == Order::ResolvedFirst ? ChargeStateParams::ResolvedOnly : ChargeStateParams::UnresolvedOnly;
    return {method, Search(spectrum, method, false)};
  }
  DeconSpectrum unresolved = spectrum;
  const std::size_t ofChance = Search(spectrum, ChargeStateParams::ResolvedOnly, true);
  Search(unresolved, ChargeStateParams::UnresolvedOnly, true);
  if (IntensityOf(spectrum) >= IntensityOf(unresolved)) return {ChargeStateParams::ResolvedOnly, ofChance};
  spectrum = std::move(unresolved);
  return {ChargeStateParams::UnresolvedOnly, 0};
}

}  // namespace

std::size_t FindSeries(DeconSpectrum& spectrum, Order order) {
  const ChargeStateParams::Methods wanted = spectrum.CSParams.Method;
  const bool isList = order == Order::OfList;
  if (wanted != ChargeStateParams::ResAndUnres) return Search(spectrum, wanted, isList);
  const First first = SearchFirst(spectrum, order);
  const auto second = first.method == ChargeStateParams::ResolvedOnly ? ChargeStateParams::UnresolvedOnly
                                                                      : ChargeStateParams::ResolvedOnly;
  const std::size_t ofChance = SearchRest(spectrum, second, isList);
  spectrum.CSParams.Method = wanted;
  return first.ofChance + ofChance;
}

}  // namespace TslTool
