#include <tool/commands/overlap/GroupFits.h>

#include <tool/chain/SmoothFilter.h>
#include <tool/commands/overlap/FittedPoints.h>
#include <tool/commands/peaks/CountVariance.h>
#include <tslbl/closed/math/peak/GaussPeak.h>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace TslTool {
namespace {

using TslBL::OverlapPeakInfo;
using TslBL::Spectrum;
using TslMath::GaussPeak;
using TslMath::OverlapFit;

constexpr double kSamePlace = 0.25;  // FWHM

// Where fitted peaks are, as the next fit takes them.
struct Start {
  std::vector<std::int32_t> apexes;
  double a3 = 0.0;
};

Start StartOf(const std::vector<OverlapPeakInfo>& peaks, const GroupSpan& span) {
  Start start;
  for (const OverlapPeakInfo& peak : peaks) {
    start.apexes.push_back(static_cast<std::int32_t>(std::lround(std::clamp(
        peak.Position - static_cast<double>(span.first), 0.0, static_cast<double>(span.last - span.first)))));
    start.a3 += GaussPeak::FWHM_to_A3(std::abs(peak.FWHM)) / static_cast<double>(peaks.size());
  }
  return start;
}

bool AreSamePeaks(const OverlapFit& fit, const std::vector<OverlapPeakInfo>& peaks, std::size_t first) {
  if (fit.sum.Count() != peaks.size()) return false;
  for (std::size_t k = 0; k < peaks.size(); ++k) {
    const double place = peaks[k].Position - static_cast<double>(first);
    if (!(std::abs(fit.sum.Centroid(k) - place) <= kSamePlace * std::abs(peaks[k].FWHM)) ||
        (fit.sum.heights[k] > 0.0) != (peaks[k].Height > 0.0))
      return false;
  }
  return true;
}

std::span<OverlapPeakInfo> PeaksOf(Spectrum& spectrum, std::uint32_t group) {
  const auto isOfIt = [&](const OverlapPeakInfo& peak) { return peak.GroupId == group; };
  const auto first = std::ranges::find_if(spectrum.overlapPeaks, isOfIt);
  return {first, std::find_if_not(first, spectrum.overlapPeaks.end(), isOfIt)};
}

void TakeOver(const OverlapFit& fit, std::size_t first, std::span<OverlapPeakInfo> peaks) {
  for (std::size_t k = 0; k < peaks.size(); ++k) {
    peaks[k].Position = static_cast<double>(first) + fit.sum.Centroid(k);
    peaks[k].Height = fit.sum.heights[k];
    peaks[k].Baseline = fit.sum.baseline;
    peaks[k].FWHM = GaussPeak::A3_to_FWHM(fit.sum.widths[k]);
    peaks[k].Fit4 = fit.reducedSquares;
    peaks[k].Fit5 = fit.errors[k].centroid;
    peaks[k].Fit6 = fit.errors[k].area;
  }
}

}  // namespace

GroupSpan SpanOf(const Spectrum& spectrum, std::uint32_t group) {
  GroupSpan span{spectrum.xAxis.size() - 1, 0};
  const auto include = [&](const TslBL::PeakInfo& row) {
    span.first = std::min<std::size_t>(span.first, row.startIdx);
    span.last = std::max<std::size_t>(span.last, row.endIdx);
  };
  for (const TslBL::PeakInfo& row : spectrum.peaks)
    if (row.overlapGroup == group) include(row);
  for (const OverlapPeakInfo& fit : spectrum.overlapPeaks)
    if (fit.GroupId == group) include(spectrum.peaks.at(fit.DataPeakId));
  return span;
}

double VariancePerMeanOf(const LoadedSpectrum& loaded) {
  if (!AreMeasuredFitted(loaded)) return 0.0;
  const auto filter = FilterOf(*loaded.spectrum);
  return filter != nullptr ? CountAmplOf(loaded, filter->weights) : loaded.countAmpl;
}

std::optional<OverlapFit> FitOfGroup(const LoadedSpectrum& loaded, std::uint32_t group,
                                     double variancePerMean) {
  const std::vector<OverlapPeakInfo> peaks = loaded.spectrum->QOverlapPeakGroup(group);
  const GroupSpan span = SpanOf(*loaded.spectrum, group);
  const Start start = StartOf(peaks, span);
  std::vector<double> x(span.last - span.first + 1);
  std::iota(x.begin(), x.end(), 0.0);
  const std::span<const double> y = std::span(FittedPoints(loaded)).subspan(span.first, x.size());
  const bool isDirect = loaded.spectrum->opdParams.FittingFunc == TslBL::OPDParams::HookeJeeves;
  std::optional<OverlapFit> fit =
      TslMath::FitOverlap(isDirect ? TslMath::FitMethod::HookeJeeves : TslMath::FitMethod::LevenbergMarquardt,
                          {x, y, start.apexes, peaks.front().Baseline, start.a3, variancePerMean});
  return fit && AreSamePeaks(*fit, peaks, span.first) ? fit : std::nullopt;
}

void FitWithKnownNoise(LoadedSpectrum& loaded) {
  const double variancePerMean = VariancePerMeanOf(loaded);
  if (!(variancePerMean > 0.0)) return;
  Spectrum& spectrum = *loaded.spectrum;
  for (std::uint32_t group = 1; group <= spectrum.QNumGroups(); ++group) {
    const std::optional<OverlapFit> fit = FitOfGroup(loaded, group, variancePerMean);
    if (fit) TakeOver(*fit, SpanOf(spectrum, group).first, PeaksOf(spectrum, group));
  }
}

}  // namespace TslTool
