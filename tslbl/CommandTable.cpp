// The table of evaluation commands: the one file that names them all. Text and number are
// stored in documents and streams and never change; the order is that of the application's
// menus.

#include <tslbl/curve/Commands.h>

namespace TslBL {
namespace {

constexpr CommandRow kCommands[] = {
    {L"Empty", EvalType::Empty, MakeEmpty},
    {L"Baseline", EvalType::Baseline, MakeBaseline},
    {L"Baseline Subtract", EvalType::BaselineSubtract, MakeBaselineSubtract},
    {L"Noise", EvalType::Noise, MakeNoise},
    {L"Peak Detect", EvalType::PeakDetect, MakePeakDetect},
    {L"Smooth", EvalType::Smooth, MakeSmooth},
    {L"Threshold", EvalType::Threshold, MakeThreshold},
    {L"Threshold Subtract", EvalType::ThresholdSubtract, MakeThresholdSubtract},
    {L"Aerosol Filter", EvalType::AerosolFilter, MakeAerosolFilter},
};

}  // namespace

std::span<const CommandRow> CommandTable() { return kCommands; }

}  // namespace TslBL
