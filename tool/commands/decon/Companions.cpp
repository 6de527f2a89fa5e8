#include <tool/commands/decon/Companions.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

using TslBL::OverlapPeakInfo;

constexpr double kOne = 0.55;   // widths
constexpr double kClose = 1.1;  // widths
constexpr double kWeak = 0.35;  // of the area
// Variance and third central moment of the isotopes of an average protein, Da^2 and Da^3, over its mass; of
// the latter noise makes so many times.
constexpr double kIsotopeVariance = 5.9e-4;
constexpr double kIsotopeMoment = 6.1e-4;
constexpr double kMostOfIsotopes = 4.0;
constexpr double kWidthOfSigma = 2.3548200450309493;

struct Fit {
  OverlapPeakInfo peak;
  double mz;
  double charge;  // of the series that has it; 0 without one
  double mass;

  double Area() const { return peak.Height * std::abs(peak.FWHM); }
};

// Of two fits the one that a series has.
const Fit& Known(const Fit& a, const Fit& b) { return b.charge > 0.0 ? b : a; }

// The third central moment of two lines, Da^3.
double MomentOf(const Fit& weak, const Fit& strong) {
  const double share = weak.Area() / (weak.Area() + strong.Area());
  const double apart = Known(weak, strong).charge * std::abs(weak.mz - strong.mz);
  return share * (1.0 - share) * (1.0 - 2.0 * share) * apart * apart * apart;
}

// In widths of the lines, which isotopes make wider than fits of their parts.
double ApartInWidths(const Fit& weak, const Fit& strong) {
  const double apart = std::abs(weak.peak.Position - strong.peak.Position);
  const double ofFits = apart / std::max(std::abs(weak.peak.FWHM), std::abs(strong.peak.FWHM));
  const Fit& known = Known(weak, strong);
  const double ofIsotopes = known.charge * std::abs(weak.mz - strong.mz) /
                            (kWidthOfSigma * std::sqrt(kIsotopeVariance * known.mass));
  return std::min(ofFits, ofIsotopes);
}

bool IsCompanion(const Fit& weak, const Fit& strong) {
  const double mass = Known(weak, strong).mass;
  if (mass == 0.0 || !(strong.Area() > 0.0) || !(weak.Area() >= 0.0) || weak.Area() > strong.Area())
    return false;
  const double apart = ApartInWidths(weak, strong);
  return apart < kOne || (apart < kClose && weak.Area() < kWeak * strong.Area() &&
                          MomentOf(weak, strong) < kMostOfIsotopes * kIsotopeMoment * mass);
}

void Add(const Fit& weak, Fit& strong) {
  const double area = weak.Area() + strong.Area();
  const double share = weak.Area() / area;
  const double position = (1.0 - share) * strong.peak.Position + share * weak.peak.Position;
  const auto variance = [position](const OverlapPeakInfo& peak) {
    return std::pow(peak.FWHM / kWidthOfSigma, 2.0) + std::pow(peak.Position - position, 2.0);
  };
  const double both = (1.0 - share) * variance(strong.peak) + share * variance(weak.peak);
  strong.peak.Position = position;
  strong.peak.FWHM = kWidthOfSigma * std::sqrt(both);
  strong.peak.Height = area / strong.peak.FWHM;
  strong.mz = (1.0 - share) * strong.mz + share * weak.mz;
  const Fit& known = Known(weak, strong);
  strong.charge = known.charge;
  strong.mass = known.mass;
}

// The weakest first, as that is nobody's line.
bool MergeOne(std::vector<Fit>& fits) {
  std::vector<std::size_t> weakestFirst(fits.size());
  for (std::size_t i = 0; i < fits.size(); ++i) weakestFirst[i] = i;
  std::ranges::sort(weakestFirst, {}, [&](std::size_t i) { return fits[i].Area(); });
  for (const std::size_t i : weakestFirst)
    for (const std::size_t k : {i - 1, i + 1}) {
      if (k >= fits.size() || !IsCompanion(fits[i], fits[k])) continue;
      Add(fits[i], fits[k]);
      fits.erase(fits.begin() + static_cast<std::ptrdiff_t>(i));
      return true;
    }
  return false;
}

// All that are fitted, in their order.
std::vector<Fit> FitsOf(const TslBL::DeconSpectrum& found, const TslBL::OverlappedCurve& curve) {
  std::vector<Fit> fits;
  fits.reserve(curve.overlapPeaks.size());
  for (const OverlapPeakInfo& peak : curve.overlapPeaks)
    fits.push_back({peak, curve.FractionalIndexToXAxisVal(peak.Position), 0.0, 0.0});
  for (const TslBL::CSSeriesInfo& series : found.Series) {
    if (series.Series.Type != TslBL::CSSeries::Unresolved) continue;
    for (const TslBL::CSSeriesPeakInfo& member : series.Peaks) {
      if (!curve.IsOpdPkId(member.PeakId)) continue;
      Fit& fit = fits[member.PeakId - curve.QNumPeaks()];
      fit.charge = member.Charge;
      fit.mass = series.AvgMass;
    }
  }
  return fits;
}

}  // namespace

bool MergeCompanions(const TslBL::DeconSpectrum& found, TslBL::OverlappedCurve& curve) {
  const std::vector<Fit> fits = FitsOf(found, curve);
  std::vector<OverlapPeakInfo> kept;
  bool isAny = false;
  for (auto begin = fits.begin(); begin != fits.end();) {
    const auto end = std::find_if(begin, fits.end(),
                                  [&](const Fit& fit) { return fit.peak.GroupId != begin->peak.GroupId; });
    std::vector<Fit> group(begin, end);
    begin = end;
    bool isMerged = false;
    while (MergeOne(group)) isMerged = true;
    isAny = isAny || isMerged;
    if (isMerged && group.size() == 1) continue;
    for (const Fit& fit : group) kept.push_back(fit.peak);
  }
  if (!isAny) return false;
  curve.overlapPeaks = std::move(kept);
  curve.ReorderGroups();
  curve.SyncOverlapGroups();
  return true;
}

}  // namespace TslTool
