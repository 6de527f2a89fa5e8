#include <tool/commands/chrom/EvaluateCurve.h>

#include <fmt/format.h>

#include <tool/chain/Lift.h>
#include <tool/chain/SmoothFilter.h>
#include <tool/commands/chrom/ChromDefaults.h>
#include <tool/commands/chrom/NoiseFloor.h>
#include <tool/commands/chrom/PeakAreas.h>
#include <tool/frame/InputError.h>
#include <tslbl/chromatogram/ICPeakTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/CurveEval.h>
#include <algorithm>

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

ChromPeak PeakOf(const TslBL::ICObj& curve, std::uint32_t row, const PeakArea& area,
                 const SmoothFilter* filter) {
  const TslBL::ICPeak values = TslBL::TranslateICPeak(curve, row);
  const TslBL::PeakInfo& info = curve.peaks[row];
  const double width = info.halfHeightRightIdx - info.halfHeightLeftIdx;
  const double gain = filter ? filter->gain.Of(width) : 1.0;
  ChromPeak peak;
  peak.row = row;
  peak.rtSeconds = info.useMax ? values.MaxX : values.CentroidX;
  peak.height = (info.ReportedAmpl() - info.baselineAmpl) / gain;
  peak.area = area.area;
  peak.areaError = area.error;
  peak.startSeconds = curve.xAxis[area.first];
  peak.endSeconds = curve.xAxis[area.last];
  peak.widthSeconds = values.Width;
  if (filter && width > 0.0) peak.widthSeconds *= filter->gain.WidthBefore(width) / width;
  peak.signalToNoise = values.Signal2Noise;
  return peak;
}

std::vector<ChromPeak> PeaksOf(const Chromatogram& measured, const TslBL::ICObj& curve) {
  const auto filter = FilterOf(curve);
  const std::vector<PeakArea> areas = PeakAreas(measured, curve, filter.get());
  std::vector<ChromPeak> peaks;
  for (std::uint32_t row = 0; row < curve.QNumPeaks(); ++row)
    peaks.push_back(PeakOf(curve, row, areas[row], filter.get()));
  return peaks;
}

// The highest point of a stretch as a row of the peak table, where no peak is found around it.
TslBL::PeakInfo HighestPoint(const TslBL::ICObj& curve, std::uint32_t top) {
  TslBL::PeakInfo row;
  row.apexIdx = top;
  row.maxIdx = row.centroidIdx = row.halfHeightLeftIdx = row.halfHeightRightIdx = top;
  row.apexAmpl = row.maxAmpl = row.centroidAmpl = curve.yAxis[top];
  row.baselineAmpl = row.maxBaseline = curve.baseline.empty() ? 0.0 : curve.baseline[top];
  row.noiseAmpl = curve.noise.empty() ? 0.0 : curve.noise[top];
  row.useMax = true;
  return row;
}

// Leaves the one peak in the table that the user integrates.
ChromPeak Integrated(const std::string& file, const Chromatogram& measured, const RealRange& range,
                     TslBL::ICObj& curve) {
  const std::vector<double>& x = measured.seconds;
  const auto first = std::ranges::lower_bound(x, range.from);
  const auto end = std::ranges::upper_bound(x, range.to);
  if (end - first < 2)
    throw InputError(
        file, "curve " + measured.name,
        fmt::format("there are no two points from {} to {} s to integrate", range.from, range.to));
  const auto from = static_cast<std::uint32_t>(first - x.begin());
  const auto last = static_cast<std::uint32_t>(end - x.begin() - 1);
  const auto& y = curve.yAxis;
  const auto top =
      static_cast<std::uint32_t>(std::max_element(y.begin() + from, y.begin() + last + 1) - y.begin());
  TslBL::ICPeak found;
  const bool isPeak =
      TslBL::DetectOnePeak(curve, top, found) && found.MaxX >= *first && found.MaxX <= x[last];
  TslBL::PeakInfo row = isPeak ? curve.peaks[found.PeakId] : HighestPoint(curve, top);
  row.startIdx = from;
  row.endIdx = last;
  curve.peaks = {row};
  curve.largestAreaIdx = curve.largestMaxIdx = curve.largestCentroidIdx = 0;
  const auto filter = FilterOf(curve);
  return PeakOf(curve, 0, AreaBetween(measured, curve, filter.get(), from, last), filter.get());
}

}  // namespace

EvaluatedCurve EvaluateCurve(Chromatogram measured, const CurveEvaluation& how) {
  EvaluatedCurve result;
  const ChainDefaults defaults =
      how.chain.NeedsDefaults() ? DefaultsForCurve(measured.seconds, measured.values) : ChainDefaults();
  const double lowest = *std::ranges::min_element(measured.values);
  const double lift = how.chain.ToleratesOffset() ? std::max(-lowest, 0.0) : 0.0;
  result.curve = CurveOf(measured, lift);
  Evaluate(how.file, measured, how.chain.Chain(how.options, defaults), result.curve);
  if (lift > 0.0) Lower(result.curve, lift);
  result.derived = how.chain.Derived(defaults);
  if (how.integrate) {
    result.peaks = {Integrated(how.file, measured, *how.integrate, result.curve)};
  } else {
    result.peaks = PeaksOf(measured, result.curve);
    result.leftOut = std::erase_if(result.peaks, [](const ChromPeak& peak) { return !(peak.area > 0.0); });
  }
  result.measured = std::move(measured);
  return result;
}

}  // namespace TslTool
