#include <tool/commands/peaks/Evaluation.h>

#include <tool/chain/Lift.h>
#include <tool/chain/SmoothFilter.h>
#include <tool/commands/peaks/CutNoise.h>
#include <tool/commands/peaks/FlankPeaks.h>
#include <tool/commands/peaks/RoundedNoise.h>
#include <tool/commands/peaks/ShotLimit.h>
#include <tool/commands/peaks/Spikes.h>
#include <tool/commands/peaks/Windows.h>
#include <tool/frame/InputError.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>

namespace TslTool {
namespace {

// A list of peaks has its peak table and its noise by now.
void Scale(LoadedSpectrum& loaded, double factor) {
  for (double& amplitude : loaded.spectrum->yAxis) amplitude *= factor;
  loaded.spectrum->tic *= factor;
  loaded.countAmpl *= factor;
  for (double& noise : loaded.spectrum->noise) noise *= factor;
  for (TslBL::PeakInfo& peak : loaded.spectrum->peaks)
    for (double TslBL::PeakInfo::*value :
         {&TslBL::PeakInfo::apexAmpl, &TslBL::PeakInfo::maxAmpl, &TslBL::PeakInfo::centroidAmpl,
          &TslBL::PeakInfo::area, &TslBL::PeakInfo::noiseAmpl})
      peak.*value *= factor;
}

using Steps = std::vector<TslBL::CurveEval>;

void RunSteps(const Evaluation& evaluation, const Steps& steps, LoadedSpectrum& loaded) {
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(*loaded.spectrum, steps, changed, error))
    throw InputError(evaluation.input, "scan " + std::to_string(loaded.scan), TslCommon::ToUtf8(error));
}

// The number of points whose noise was lowered before the search for peaks.
std::size_t RunChain(const Evaluation& evaluation, LoadedSpectrum& loaded) {
  const Steps& chain = evaluation.chain;
  const auto search = std::ranges::find(chain, TslBL::EvalType::PeakDetect, &TslBL::CurveEval::Type);
  const auto subtraction = std::find_if(chain.begin(), search, [](const TslBL::CurveEval& eval) {
    return eval.Type() == TslBL::EvalType::BaselineSubtract;
  });
  RunSteps(evaluation, {chain.begin(), subtraction}, loaded);
  if (subtraction != search) loaded.subtracted = loaded.spectrum->baseline;
  RunSteps(evaluation, {subtraction, search}, loaded);
  const auto filter = FilterOf(*loaded.spectrum);
  const std::size_t lowered = filter ? LimitToShots(loaded, filter->weights, evaluation.noiseLimit) : 0;
  if (filter) {
    RaiseToCutNoise(loaded, filter->weights);
    RaiseToRounding(loaded, filter->weights);
  }
  RunSteps(evaluation, {search, chain.end()}, loaded);
  return lowered;
}

}  // namespace

Findings Evaluation::Run(LoadedSpectrum& loaded) const {
  Findings findings;
  if (scale != 1.0) Scale(loaded, scale);
  if (loaded.isPeakList) return findings;
  loaded.measured = loaded.spectrum->yAxis;
  if (isLifted) loaded.lift = LiftOf(loaded.measured);
  if (loaded.lift > 0.0) Lower(*loaded.spectrum, -loaded.lift);
  findings.lowered = RunChain(*this, loaded);
  if (loaded.lift > 0.0) Lower(*loaded.spectrum, loaded.lift);
  if (leastRise > 0.0) findings.spikes = LeaveOutSpikes(loaded);
  findings.leftOut = LeaveOutFlankPeaks(loaded, leastRise);
  findings.shortWindow = EndPeaksWithTheirWindows(*loaded.spectrum);
  return findings;
}

}  // namespace TslTool
