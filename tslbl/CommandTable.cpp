// The table of evaluation commands: the one file that names them all. Text and number are
// stored in documents and streams and never change; the order is that of the application's
// menus.

#include <tslbl/chargestate/ChargeStateParams.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/records/OPDParams.h>
#include <algorithm>

namespace TslBL {

// Each stands in the Cmd*.cpp of its command.
StepFunction DoNothing, DoBaseline, DoBaselineSubtract, DoNoise, DoPeakDetect, DoSmooth, DoThreshold,
    DoThresholdSubtract, DoOPDOnCurve, DoCSDeconOnCurve;
FusedSteps DoBaselineAndNoise;

namespace {

template <class Params>
CurveEval Make() {
  return CurveEval(Params());
}
CurveEval MakeEmpty() { return CurveEval(); }

constexpr CommandRow kCommands[] = {
    {EvalType::Empty, L"Empty", MakeEmpty, DoNothing},
    {EvalType::Baseline, L"Baseline", Make<BaselineParams>, DoBaseline, kUnableToBaseline, 1},
    {EvalType::BaselineSubtract, L"Baseline Subtract", Make<CurveEval::BaselineSubtract>, DoBaselineSubtract,
     kUnableToSubtractBaseline, 0, EvalType::Baseline},
    {EvalType::Noise, L"Noise", Make<NoiseParams>, DoNoise, kUnableToNoise, 2},
    {EvalType::PeakDetect, L"Peak Detect", Make<PeakDetectParams>, DoPeakDetect, kUnableToPeakDetect, 4},
    {EvalType::Smooth, L"Smooth", Make<SmoothParams>, DoSmooth, kUnableToSmooth},
    {EvalType::Threshold, L"Threshold", Make<ThresholdParams>, DoThreshold, kUnableToThreshold, 3},
    {EvalType::ThresholdSubtract, L"Threshold Subtract", Make<CurveEval::ThresholdSubtract>,
     DoThresholdSubtract, kUnableToSubtractThreshold, 0, EvalType::Threshold},
    {EvalType::OPD, L"OPD", Make<OPDParams>, DoOPDOnCurve, kNoMessage, 5},
    {EvalType::CSDecon, L"Charge State Deconvolution", Make<ChargeStateParams>, DoCSDeconOnCurve, kNoMessage,
     6},
    {EvalType::AerosolFilter, L"Aerosol Filter", Make<CurveEval::AerosolFilter>, DoAerosolFilter},
};

constexpr FusionRow kFusions[] = {
    {EvalType::Baseline, EvalType::Noise, DoBaselineAndNoise},
};

}  // namespace

std::span<const CommandRow> CommandTable() { return kCommands; }
std::span<const FusionRow> FusionTable() { return kFusions; }

const CommandRow* FindCommand(EvalType type) {
  const auto* row = std::ranges::find(kCommands, type, &CommandRow::type);
  return row != std::end(kCommands) ? row : nullptr;
}

const CommandRow* FindCommand(const std::wstring& text) {
  const auto* row = std::ranges::find(kCommands, text, &CommandRow::text);
  // Stored documents rely on it that any other text stands for charge state deconvolution.
  return row != std::end(kCommands) ? row : FindCommand(EvalType::CSDecon);
}

FusedSteps* FindFusion(EvalType first, EvalType second) {
  const auto* row = std::ranges::find_if(
      kFusions, [&](const FusionRow& fusion) { return fusion.first == first && fusion.second == second; });
  return row != std::end(kFusions) ? row->run : nullptr;
}

}  // namespace TslBL
