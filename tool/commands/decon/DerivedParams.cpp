#include <tool/commands/decon/DerivedParams.h>

#include <tool/commands/decon/AdductText.h>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

constexpr double kApart = 0.8;  // 1 / charge, in widths, from which on neighbours have tops of their own
// Between these widths, m/z, isotopes of charge 1 run into each other and can be taken apart.
constexpr double kTouching = 0.5;
constexpr double kMerged = 2.0;
constexpr double kMostCharges = 60.0;
constexpr double kOff = 0.25;       // of the width
constexpr double kLeastOff = 10.0;  // ppm of m/z, as no axis is better than that for all peaks
// Share of the area that is in narrower peaks: lumps of isotopes that run together do not tell what stands
// apart.
constexpr double kNarrow = 0.1;
constexpr double kNear = 0.1;        // share of neighbours that are nearer
constexpr double kWidthOfGap = 0.4;  // of peaks that can be told apart at a distance of 1
// ppm of mass: isotopes of one charge may be counted wrongly until its other charges are seen.
constexpr double kLeastChargeOff = 300.0;
constexpr std::uint32_t kSeveral = 3;  // charges

struct Weighted {
  double value;
  double weight;
};

// Below which this share of the weight lies; 0 of none.
double QuantileOf(std::vector<Weighted> values, double share) {
  std::ranges::sort(values, {}, &Weighted::value);
  double all = 0.0;
  for (const auto& [value, weight] : values) all += weight;
  double sum = 0.0;
  for (const auto& [value, weight] : values) {
    sum += weight;
    if (sum >= share * all) return value;
  }
  return 0.0;
}

double NarrowWidth(const TslBL::Spectrum& spectrum) {
  std::vector<Weighted> widths;
  for (std::uint32_t i = 0; i < spectrum.QNumPeaks(); ++i) {
    const TslBL::CurvePeak peak = TslBL::TranslateCurvePeak(spectrum, i);
    if (peak.Width > 0.0) widths.push_back({peak.Width, std::max(peak.Area, 0.0)});
  }
  return QuantileOf(std::move(widths), kNarrow);
}

// By the weaker of two neighbours, as most peaks of a list may be noise.
double NearestNeighbours(const TslBL::Spectrum& spectrum) {
  std::vector<Weighted> gaps;
  const std::vector<TslBL::PeakInfo>& peaks = spectrum.peaks;
  for (std::size_t i = 1; i < peaks.size(); ++i)
    gaps.push_back({spectrum.xAxis[peaks[i].apexIdx] - spectrum.xAxis[peaks[i - 1].apexIdx],
                    std::min(peaks[i].area, peaks[i - 1].area)});
  return QuantileOf(std::move(gaps), kNear);
}

double MiddleOf(const TslBL::Spectrum& spectrum) {
  return 0.5 * (spectrum.xAxis.front() + spectrum.xAxis.back());
}

std::uint32_t Within(double value, void (*limits)(std::uint32_t& min, std::uint32_t& max)) {
  std::uint32_t min = 0;
  std::uint32_t max = 0;
  limits(min, max);
  return static_cast<std::uint32_t>(std::lround(std::clamp<double>(value, min, max)));
}

}  // namespace

double PeakWidthOf(const LoadedSpectrum& loaded) {
  return loaded.isPeakList ? kWidthOfGap * NearestNeighbours(*loaded.spectrum)
                           : NarrowWidth(*loaded.spectrum);
}

TslBL::ChargeStateParams DerivedParams(const DeconWishes& wishes, const LoadedSpectrum& loaded) {
  TslBL::ChargeStateParams params = wishes.params;
  if (!wishes.hasAdduct && loaded.polarity < 0) SetLossOfProton(params);
  const double width = PeakWidthOf(loaded);
  if (!(width > 0.0)) return params;
  TslBL::ResolvedParams& resolved = params.Resolved;
  if (!wishes.hasMaxCharge)
    resolved.MaxCS = static_cast<std::uint32_t>(std::clamp(std::floor(kApart / width), 1.0, kMostCharges));
  if (!wishes.hasIsotopeAccuracy)
    resolved.MzAccuracy = Within(std::max(kLeastOff, 1e6 * kOff * width / MiddleOf(*loaded.spectrum)),
                                 TslBL::ResolvedParams::GetMZAccurayLimits);
  if (!wishes.hasChargeAccuracy)
    resolved.CsAccuracy = Within(std::max<double>(kLeastChargeOff, resolved.MzAccuracy),
                                 TslBL::ResolvedParams::GetChargeStateAccuracyLimits);
  return params;
}

bool MayIsotopesTouch(const LoadedSpectrum& loaded) {
  const double width = PeakWidthOf(loaded);
  return !loaded.isPeakList && width >= kTouching && width <= kMerged;
}

bool AreIsotopesResolved(const TslBL::ChargeStateParams& params) { return params.Resolved.MaxCS >= kSeveral; }

}  // namespace TslTool
