#include <tool/commands/overlap/FittedCurves.h>

#include <tslbl/closed/math/peak/GaussPeak.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

using TslBL::OverlapPeakInfo;
using TslBL::Spectrum;

struct Span {
  std::size_t first;
  std::size_t last;
};

// The data peaks of the group, and those of its fitted peaks.
Span SpanOf(const Spectrum& spectrum, std::uint32_t group, const std::vector<OverlapPeakInfo>& fits) {
  Span span{spectrum.xAxis.size() - 1, 0};
  const auto include = [&](const TslBL::PeakInfo& row) {
    span.first = std::min<std::size_t>(span.first, row.startIdx);
    span.last = std::max<std::size_t>(span.last, row.endIdx);
  };
  for (const TslBL::PeakInfo& row : spectrum.peaks)
    if (row.overlapGroup == group) include(row);
  for (const OverlapPeakInfo& fit : fits) include(spectrum.peaks.at(fit.DataPeakId));
  return span;
}

double HeightAt(const OverlapPeakInfo& fit, double point) {
  const double u = (point - fit.Position) / TslMath::GaussPeak::FWHM_to_A3(fit.FWHM);
  return fit.Height * std::exp(-0.5 * u * u);
}

FittedGroup CurvesOf(const Spectrum& spectrum, std::uint32_t number) {
  const std::vector<OverlapPeakInfo> fits = spectrum.QOverlapPeakGroup(number);
  const Span span = SpanOf(spectrum, number, fits);
  const double baseline = fits.front().Baseline;
  FittedGroup group{number, span.first, std::vector<double>(span.last - span.first + 1, baseline), {}};
  for (const OverlapPeakInfo& fit : fits) {
    std::vector<double>& curve = group.peaks.emplace_back(group.sum.size());
    for (std::size_t i = 0; i < curve.size(); ++i) {
      const double height = HeightAt(fit, static_cast<double>(span.first + i));
      curve[i] = fit.Baseline + height;
      group.sum[i] += height;
    }
  }
  return group;
}

}  // namespace

std::vector<FittedGroup> FittedGroups(const Spectrum& spectrum) {
  std::vector<FittedGroup> groups;
  for (std::uint32_t number = 1; number <= spectrum.QNumGroups(); ++number)
    groups.push_back(CurvesOf(spectrum, number));
  return groups;
}

}  // namespace TslTool
