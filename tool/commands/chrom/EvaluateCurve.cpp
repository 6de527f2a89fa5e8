#include <tool/commands/chrom/EvaluateCurve.h>

#include <tool/commands/chrom/AreaError.h>
#include <tool/commands/chrom/ChromDefaults.h>
#include <tool/commands/chrom/NoiseFloor.h>
#include <tool/commands/peaks/Lift.h>
#include <tool/commands/peaks/SmoothFilter.h>
#include <tool/frame/InputError.h>
#include <tslbl/chromatogram/ICPeakTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/CurveEval.h>
#include <algorithm>
#include <tuple>

namespace TslTool {
namespace {

using Chain = std::vector<TslBL::CurveEval>;

TslBL::ICObj CurveOf(const Chromatogram& measured, double lift) {
  TslBL::ICObj curve;
  curve.name = TslCommon::FromUtf8(measured.name);
  curve.xAxis = measured.seconds;
  curve.yAxis = measured.values;
  for (double& value : curve.yAxis) value += lift;
  curve.sourceListA = measured.scans;
  curve.AddStatus(TslBL::Curve::STATUS_X);
  curve.AddStatus(TslBL::Curve::STATUS_Y);
  return curve;
}

void Run(const std::string& file, const Chromatogram& measured, const Chain& chain, TslBL::ICObj& curve) {
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(curve, chain, changed, error))
    throw InputError(file, "curve " + measured.name, TslCommon::ToUtf8(error));
}

// The search is run apart, as noise that the data do not show is set before it.
void Evaluate(const std::string& file, const Chromatogram& measured, const Chain& chain,
              TslBL::ICObj& curve) {
  const auto search = std::ranges::find_if(
      chain, [](const TslBL::CurveEval& eval) { return eval.Type() == TslBL::EvalType::PeakDetect; });
  Run(file, measured, {chain.begin(), search}, curve);
  RaiseNoise(measured, curve);
  Run(file, measured, {search, chain.end()}, curve);
}

std::vector<ChromPeak> PeaksOf(const Chromatogram& measured, const TslBL::ICObj& curve) {
  if (curve.peaks.empty()) return {};
  const auto filter = FilterOf(curve);
  AreaErrors areas(measured, curve, filter.get());
  std::vector<ChromPeak> peaks;
  for (const TslBL::ICPeak& row : TslBL::CreateICPeakTable(curve)) {
    const TslBL::PeakInfo& info = curve.peaks[row.PeakId];
    const double widthPoints = info.halfHeightRightIdx - info.halfHeightLeftIdx;
    const double gain = filter ? filter->gain.Of(widthPoints) : 1.0;
    ChromPeak& peak = peaks.emplace_back();
    peak.rtSeconds = info.useMax ? row.MaxX : row.CentroidX;
    peak.height = (info.ReportedAmpl() - info.baselineAmpl) / gain;
    peak.startSeconds = curve.xAxis[info.startIdx];
    peak.endSeconds = curve.xAxis[info.endIdx];
    peak.widthSeconds = row.Width;
    peak.signalToNoise = row.Signal2Noise;
    std::tie(peak.area, peak.areaError) = areas.Of(row.PeakId);
  }
  return peaks;
}

}  // namespace

EvaluatedCurve EvaluateCurve(const std::string& file, Chromatogram measured, const ChainOptions& chain,
                             const Options& options) {
  EvaluatedCurve result;
  const ChainDefaults defaults =
      chain.NeedsDefaults() ? DefaultsForCurve(measured.seconds, measured.values) : ChainDefaults();
  const double lowest = *std::ranges::min_element(measured.values);
  const double lift = chain.ToleratesOffset() ? std::max(-lowest, 0.0) : 0.0;
  result.curve = CurveOf(measured, lift);
  Evaluate(file, measured, chain.Chain(options, defaults), result.curve);
  if (lift > 0.0) Lower(result.curve, lift);
  result.derived = chain.Derived(defaults);
  result.peaks = PeaksOf(measured, result.curve);
  result.measured = std::move(measured);
  return result;
}

}  // namespace TslTool
