#include <tool/commands/peaks/Evaluation.h>

#include <tool/chain/Lift.h>
#include <tool/commands/peaks/FlankPeaks.h>
#include <tool/commands/peaks/Windows.h>
#include <tool/frame/InputError.h>
#include <tslbl/closed/common/Text.h>

namespace TslTool {
namespace {

void Scale(LoadedSpectrum& loaded, double factor) {
  for (double& amplitude : loaded.spectrum->yAxis) amplitude *= factor;
  loaded.spectrum->tic *= factor;
  loaded.countAmpl *= factor;
}

void RunChain(const Evaluation& evaluation, LoadedSpectrum& loaded) {
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(*loaded.spectrum, evaluation.chain, changed, error))
    throw InputError(evaluation.input, "scan " + std::to_string(loaded.scan), TslCommon::ToUtf8(error));
}

}  // namespace

Findings Evaluation::Run(LoadedSpectrum& loaded) const {
  Findings findings;
  if (scale != 1.0) Scale(loaded, scale);
  loaded.measured = loaded.spectrum->yAxis;
  if (isLifted) findings.lift = LiftOf(loaded.measured);
  if (findings.lift > 0.0) Lower(*loaded.spectrum, -findings.lift);
  RunChain(*this, loaded);
  if (findings.lift > 0.0) Lower(*loaded.spectrum, findings.lift);
  findings.leftOut = LeaveOutFlankPeaks(loaded, leastRise);
  findings.shortWindow = EndPeaksWithTheirWindows(*loaded.spectrum);
  return findings;
}

}  // namespace TslTool
