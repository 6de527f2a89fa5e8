#pragma once
// The calls of the overlap peak engine, with their failures as exceptions.
//
// For the sources of the library; not part of its interface.

#include <tslbl/closed/engines/OverlapPeakEngine.h>
#include <tslbl/overlap/GroupPoints.h>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace TslBL {

using TslMath::OverlapPeakEngine;

// The engine that is registered. Throws std::runtime_error "Unable to load overlap peak deconvolution
// library." if there is none.
std::unique_ptr<OverlapPeakEngine> MakeOverlapPeakEngine();

// Points of the group on which peaks are likely to stand. Throws ComError: the engine's code, or
// kNullPointer without an engine. Should the application's handler of such codes not throw: std::logic_error
// "Failure from initial estimates.".
std::vector<std::int32_t> CallInitialEstimates(OverlapPeakEngine* engine, const Spectrum& spectrum,
                                               const GroupPoints& points);

struct FitStart {
  std::vector<std::int32_t> apexes;  // points of the group
  double baseline;
  double a3;
};

// One result for each apex. Throws as above, here with "Failure from fit peaks.", and std::logic_error
// "Invalid peak count from fit peaks." for another number of results.
std::vector<TslMath::FittedGaussian> CallFitPeaks(OverlapPeakEngine* engine, OPDParams::FittingFuncs method,
                                                  const GroupPoints& points, const FitStart& start);

}  // namespace TslBL
