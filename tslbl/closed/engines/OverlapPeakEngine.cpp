#include <tslbl/closed/engines/OverlapPeakEngine.h>

#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <tslbl/closed/math/overlap/InitialEstimates.h>
#include <memory>

namespace TslMath {
namespace {

class OwnOverlapPeakEngine final : public OverlapPeakEngine {
 public:
  std::int32_t InitialEstimates(bool smooth, std::int32_t numSmoothPts, std::span<const double> /*x*/,
                                std::span<const double> y, std::vector<std::int32_t>& peaks) override {
    peaks = TslMath::InitialEstimates(smooth, numSmoothPts, y);
    return kOk;
  }

  std::int32_t FitPeaks(bool hookeJeeves, std::span<const double> x, std::span<const double> y,
                        std::span<const std::int32_t> apexes, double baseline, double a3,
                        std::vector<FittedGaussian>& results) override {
    results.resize(apexes.size());
    if (TslMath::FitPeaks(hookeJeeves, x, y, apexes, baseline, a3, results)) return kOk;
    results.clear();
    return kNoFit;
  }

  bool MayWorkAtOnce() const override { return true; }
};

[[maybe_unused]] const bool kIsRegistered = [] {
  RegisterOwnOverlapPeakEngine();
  return true;
}();

}  // namespace

bool OverlapPeakEngine::MayWorkAtOnce() const { return false; }

void RegisterOwnOverlapPeakEngine() {
  TslCommon::ComponentRegistry::Instance().Register(OverlapPeakEngine::kClassId,
                                                    [] { return std::make_unique<OwnOverlapPeakEngine>(); });
}

}  // namespace TslMath
