#include <tslbl/overlap/FitGroup.h>

#include <tslbl/closed/math/peak/GaussPeak.h>
#include <stdexcept>

namespace TslBL {
namespace {

using TslMath::FittedGaussian;
using TslMath::GaussPeak;

FitStart StartOf(std::span<const OPDEstimate> estimates) {
  const OPDEstimate& first = estimates.front();
  // The half width goes in for a full one: a start that is narrow rather than wide keeps close peaks apart.
  FitStart start{{}, first.Baseline, GaussPeak::FWHM_to_A3(first.HalfWidth)};
  for (const OPDEstimate& estimate : estimates)
    start.apexes.push_back(static_cast<std::int32_t>(estimate.ApexIdx - first.StartIdx));
  return start;
}

OverlapPeakInfo PeakOf(const OPDEstimate& estimate, const FittedGaussian& fit, const GroupPoints& points) {
  if (!(fit.centre >= 0.0 && fit.centre < points.Count()))
    throw std::runtime_error(
        "Current settings create an overlap peak outside the group range.  Try peaks closer to the group.");
  OverlapPeakInfo peak;
  peak.GroupId = estimate.GroupId;
  peak.DataPeakId = estimate.DataPeakId;
  peak.Position = points.first + fit.centre;
  peak.Height = fit.height;
  peak.Baseline = fit.baseline;
  peak.FWHM = GaussPeak::A3_to_FWHM(fit.a3);
  peak.Fit4 = fit.fit4;
  peak.Fit5 = fit.fit5;
  peak.Fit6 = fit.fit6;
  return peak;
}

}  // namespace

std::vector<OverlapPeakInfo> FitPeaksOf(const Spectrum& spectrum, std::span<const OPDEstimate> estimates,
                                        OPDParams::FittingFuncs method, OverlapPeakEngine* engine) {
  const GroupPoints points = QGroupPoints(spectrum, estimates.front().StartIdx, estimates.back().EndIdx);
  const std::vector<FittedGaussian> fits = CallFitPeaks(engine, method, points, StartOf(estimates));
  std::vector<OverlapPeakInfo> group;
  for (std::size_t i = 0; i < fits.size(); ++i) group.push_back(PeakOf(estimates[i], fits[i], points));
  return group;
}

void FitGroup(Spectrum& spectrum, std::span<const OPDEstimate> estimates, OPDParams::FittingFuncs method,
              OverlapPeakEngine* engine) {
  std::vector<OverlapPeakInfo> group = FitPeaksOf(spectrum, estimates, method, engine);
  spectrum.WOverlapPeakGroup(group);
}

}  // namespace TslBL
