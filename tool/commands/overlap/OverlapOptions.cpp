#include <tool/commands/overlap/OverlapOptions.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

using TslBL::OPDParams;

constexpr std::uint32_t kMostPeaks = 200;
// The library's preset leaves a peak out of the group whose tail it stands on: what is fitted without it is
// shifted by several standard errors.
constexpr std::uint32_t kCommonEnd = 10;  // percent
// One limit of resolution parts merges from single peaks nowhere but at one m/z, where peaks are equally
// wide.
constexpr std::uint32_t kAnyResolution = std::numeric_limits<std::uint32_t>::max();
// Points as they were measured show how much noise they have, and so how many peaks are certain.
constexpr std::uint32_t kEstimatePoints = 1;

OPDParams::FittingFuncs MethodOf(const std::string& name) {
  return name == "hooke" ? OPDParams::HookeJeeves : OPDParams::MarquardtLevenberg;
}

std::uint32_t PercentOf(const std::string& option, double percent) {
  if (!(percent >= 0.0 && percent <= 100.0)) throw UsageError(option + ": it must be from 0 to 100");
  return static_cast<std::uint32_t>(std::lround(percent));
}

}  // namespace

void OverlapOptions::Declare(Options& options) {
  const OPDParams preset;
  options.Repeated("--overlap-range A-B", ranges_,
                   "Look only at peaks that reach into this range of m/z; may be given several times [all]");
  options.Value("--min-common-end PERCENT", commonEnd_,
                fmt::format("Two peaks are joined where the end of the left one stands at least as high, in "
                            "percent of the lower peak's height [{}]",
                            kCommonEnd));
  options.Value("--min-resolution N", resolution_,
                "A peak that resolves less, m/z over width, may be a merge [any peak may be]");
  options.Value("--max-shift X", shift_,
                fmt::format("So may one whose centroid lies this far from its maximum, m/z [{}]",
                            preset.MinDeltaCentroidPkMax));
  options.Value(
      "--estimate-points N", smoothPoints_,
      fmt::format("Points over which amplitudes are smoothed to count the peaks of a group [{}: not at all]",
                  kEstimatePoints));
  options.Value(
      "--min-amplitude X", minAmplitude_,
      fmt::format("Least amplitude on which a peak of a group may stand, a whole number [{} for runs, "
                  "else 0]",
                  preset.MinPeakAmplitude));
  options.Value("--group-peaks N", groupPeaks_,
                fmt::format("Keep only this many peaks of a group, the tallest [{}]", preset.MaxPeaks));
  options.Choice("--method NAME", method_, {"marquardt", "hooke"},
                 "Marquardt and Levenberg, or the slower direct search of Hooke and Jeeves");
  options.Flag("--single-group", isSingleGroup_, "Fit all that overlaps in a spectrum as one group");
}

OPDParams OverlapOptions::Params(bool isCounted) const {
  OPDParams params;
  for (const std::string& text : ranges_) {
    const RealRange range = ParseRealRange("--overlap-range", text);
    params.Ranges.push_back({true, range.from, range.to});
  }
  params.FullRange = ranges_.empty();
  params.MinAmplPercentCmnEndPt = commonEnd_ ? PercentOf("--min-common-end", *commonEnd_) : kCommonEnd;
  params.ResolutionThreshold = resolution_.value_or(kAnyResolution);
  params.MinDeltaCentroidPkMax = shift_.value_or(params.MinDeltaCentroidPkMax);
  if (!(params.MinDeltaCentroidPkMax >= 0.0)) throw UsageError("--max-shift: it must be 0 or above");
  params.NumSmoothPts = smoothPoints_.value_or(kEstimatePoints);
  params.MinPeakAmplitude = minAmplitude_.value_or(isCounted ? params.MinPeakAmplitude : 0);
  params.MaxPeaks = groupPeaks_.value_or(params.MaxPeaks);
  if (params.MaxPeaks < 2 || params.MaxPeaks > kMostPeaks)
    throw UsageError(fmt::format("--group-peaks: it must be from 2 to {}", kMostPeaks));
  params.FittingFunc = MethodOf(method_);
  params.SingleGroup = isSingleGroup_;
  return params;
}

}  // namespace TslTool
