#include <tool/commands/overlap/FittedCurves.h>

#include <tool/commands/overlap/GroupFits.h>
#include <tslbl/closed/math/peak/GaussPeak.h>
#include <cmath>

namespace TslTool {
namespace {

using TslBL::OverlapPeakInfo;
using TslMath::PeakSum;

// The peaks as the library's rows have them: Gaussians.
PeakSum GaussiansOf(const std::vector<OverlapPeakInfo>& fits, std::size_t first) {
  PeakSum sum;
  sum.baseline = fits.front().Baseline;
  for (const OverlapPeakInfo& fit : fits) {
    sum.heights.push_back(fit.Height);
    sum.tops.push_back(fit.Position - static_cast<double>(first));
    sum.widths.push_back(TslMath::GaussPeak::FWHM_to_A3(fit.FWHM));
  }
  return sum;
}

PeakSum OnlyPeak(const PeakSum& sum, std::size_t k) {
  return {{sum.heights[k]}, {sum.tops[k]}, {sum.widths[k]}, sum.skew, sum.baseline};
}

std::vector<double> CurveOf(const PeakSum& sum, std::size_t points) {
  std::vector<double> curve(points);
  for (std::size_t i = 0; i < points; ++i) curve[i] = sum.At(static_cast<double>(i));
  return curve;
}

FittedGroup CurvesOf(const LoadedSpectrum& loaded, std::uint32_t number, double variancePerMean) {
  const GroupSpan span = SpanOf(*loaded.spectrum, number);
  const auto fit = FitOfGroup(loaded, number, variancePerMean);
  const PeakSum sum = fit ? fit->sum : GaussiansOf(loaded.spectrum->QOverlapPeakGroup(number), span.first);
  const std::size_t points = span.last - span.first + 1;
  FittedGroup group{number, span.first, CurveOf(sum, points), {}};
  for (std::size_t k = 0; k < sum.Count(); ++k) group.peaks.push_back(CurveOf(OnlyPeak(sum, k), points));
  return group;
}

}  // namespace

std::vector<FittedGroup> FittedGroups(const LoadedSpectrum& loaded) {
  const double variancePerMean = VariancePerMeanOf(loaded);
  std::vector<FittedGroup> groups;
  for (std::uint32_t number = 1; number <= loaded.spectrum->QNumGroups(); ++number)
    groups.push_back(CurvesOf(loaded, number, variancePerMean));
  return groups;
}

}  // namespace TslTool
