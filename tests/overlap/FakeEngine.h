#pragma once
// An overlap peak engine that does what a test tells it, in the place of the library's own.

#include <tslbl/closed/engines/OverlapPeakEngine.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace tests {

using TslMath::FittedGaussian;
using TslMath::OverlapPeakEngine;

using Indexes = std::vector<std::int32_t>;

struct EstimateCall {
  bool smooth;
  std::int32_t numSmoothPts;
  std::vector<double> x;
  std::vector<double> y;
};

struct FitCall {
  bool hookeJeeves;
  std::vector<double> x;
  std::vector<double> y;
  Indexes apexes;
  double baseline;
  double a3;
};

// A Gaussian of height 50, offset 5 and full width 2 on each apex; the three values that are only passed on
// are 4, 5 and 6 times the number of the peak, counted from 1.
inline std::int32_t FitOnApexes(const FitCall& call, std::vector<FittedGaussian>& results) {
  for (const std::int32_t apex : call.apexes) {
    const auto n = static_cast<double>(results.size() + 1);
    results.push_back({50.0, static_cast<double>(apex), 2.0 / 2.3548200450309493, 5.0, 4 * n, 5 * n, 6 * n});
  }
  return OverlapPeakEngine::kOk;
}

// While one lives, it is what the library finds.
class FakeEngine {
 public:
  // What it proposes for each group, relative to it, and how it fits.
  std::function<std::int32_t(const EstimateCall&, Indexes&)> estimate = [](const EstimateCall&, Indexes&) {
    return OverlapPeakEngine::kOk;
  };
  std::function<std::int32_t(const FitCall&, std::vector<FittedGaussian>&)> fit = FitOnApexes;
  // What it was asked.
  std::vector<EstimateCall> estimates;
  std::vector<FitCall> fits;
  int alive = 0;  // engines that were made and not given up

  FakeEngine() {
    Registry().Register(OverlapPeakEngine::kClassId, [this] { return std::make_unique<Engine>(*this); });
  }
  FakeEngine(const FakeEngine&) = delete;
  FakeEngine& operator=(const FakeEngine&) = delete;
  ~FakeEngine() { TslMath::RegisterOwnOverlapPeakEngine(); }

  void Propose(const Indexes& proposed) {
    estimate = [proposed](const EstimateCall&, Indexes& peaks) {
      peaks = proposed;
      return OverlapPeakEngine::kOk;
    };
  }

  static TslCommon::ComponentRegistry& Registry() { return TslCommon::ComponentRegistry::Instance(); }

 private:
  class Engine final : public OverlapPeakEngine {
   public:
    explicit Engine(FakeEngine& owner) : owner_(owner) { ++owner_.alive; }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine() override { --owner_.alive; }

    std::int32_t InitialEstimates(bool smooth, std::int32_t numSmoothPts, std::span<const double> x,
                                  std::span<const double> y, Indexes& peaks) override {
      owner_.estimates.push_back({smooth, numSmoothPts, {x.begin(), x.end()}, {y.begin(), y.end()}});
      return owner_.estimate(owner_.estimates.back(), peaks);
    }
    std::int32_t FitPeaks(bool hookeJeeves, std::span<const double> x, std::span<const double> y,
                          std::span<const std::int32_t> apexes, double baseline, double a3,
                          std::vector<FittedGaussian>& results) override {
      owner_.fits.push_back({hookeJeeves,
                             {x.begin(), x.end()},
                             {y.begin(), y.end()},
                             {apexes.begin(), apexes.end()},
                             baseline,
                             a3});
      return owner_.fit(owner_.fits.back(), results);
    }

   private:
    FakeEngine& owner_;
  };
};

}  // namespace tests
