#include <tslbl/overlap/EngineCalls.h>

#include <tslbl/closed/common/ComErrorHandler.h>
#include <stdexcept>

namespace TslBL {
namespace {

OverlapPeakEngine& RequireEngine(OverlapPeakEngine* engine) {
  if (engine == nullptr) throw ComError{ComError::kNullPointer};
  return *engine;
}

void RequireSuccess(std::int32_t result, const char* failure) {
  if (result >= 0) return;
  RaiseComError(static_cast<std::uint32_t>(result));
  throw std::logic_error(failure);
}

}  // namespace

std::unique_ptr<OverlapPeakEngine> MakeOverlapPeakEngine() {
  try {
    return ComponentRegistry::Instance().CreateAs<OverlapPeakEngine>(OverlapPeakEngine::kClassId);
  } catch (const ComError&) {
    throw std::runtime_error("Unable to load overlap peak deconvolution library.");
  }
}

std::vector<std::int32_t> CallInitialEstimates(OverlapPeakEngine* engine, const Spectrum& spectrum,
                                               const GroupPoints& points) {
  std::vector<std::int32_t> peaks;
  const bool smooth = !spectrum.CheckAllStatus(Curve::STATUS_SMOOTHED);
  const auto numSmoothPts = static_cast<std::int32_t>(spectrum.opdParams.NumSmoothPts);
  RequireSuccess(RequireEngine(engine).InitialEstimates(smooth, numSmoothPts, points.x, points.y, peaks),
                 "Failure from initial estimates.");
  return peaks;
}

std::vector<TslMath::FittedGaussian> CallFitPeaks(OverlapPeakEngine* engine, OPDParams::FittingFuncs method,
                                                  const GroupPoints& points, const FitStart& start) {
  std::vector<TslMath::FittedGaussian> results;
  RequireSuccess(RequireEngine(engine).FitPeaks(method == OPDParams::HookeJeeves, points.x, points.y,
                                                start.apexes, start.baseline, start.a3, results),
                 "Failure from fit peaks.");
  if (results.size() != start.apexes.size()) throw std::logic_error("Invalid peak count from fit peaks.");
  return results;
}

}  // namespace TslBL
