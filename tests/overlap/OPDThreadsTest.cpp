// Overlap peak deconvolution on several threads: the same groups, to the bit, and the same failures.
//
// Tests: OPD.cpp.

#include <tslbl/overlap/OPD.h>

#include <gtest/gtest.h>

#include <overlap/FakeEngine.h>
#include <overlap/OverlapSpectrum.h>
#include <tslbl/detect/ThreadingParams.h>
#include <cmath>
#include <random>

using namespace TslBL;
using namespace tests;

namespace {

constexpr std::uint32_t kGroups = 12;
constexpr std::uint32_t kSpacing = 60;  // points

// Counts with a doublet for every 60 points.
Spectrum Doublets() {
  std::vector<DataPeak> peaks;
  for (std::uint32_t k = 0; k < kGroups; ++k) {
    const std::uint32_t from = kSpacing * k;
    peaks.push_back({from + 5, from + 20.0, from + 27, 2});
    peaks.push_back({from + 27, from + 34.0, from + 50, 2});
  }
  Spectrum spectrum = SpectrumOfPeaks(peaks, kSpacing * kGroups);
  std::mt19937_64 random(1);
  for (std::uint32_t i = 0; i < spectrum.yAxis.size(); ++i) {
    const double u = (i % kSpacing - 20.0) / 5.0;
    const double v = (i % kSpacing - 34.0) / 5.0;
    const double mean = 10.0 + 900.0 * std::exp(-0.5 * u * u) + 600.0 * std::exp(-0.5 * v * v);
    spectrum.yAxis[i] = std::poisson_distribution<int>(mean)(random);
  }
  return spectrum;
}

class OnThreads {
 public:
  explicit OnThreads(std::uint32_t threads) {
    AppThreadingParams params = before_;
    params.Auto = false;
    params.ThreadPoolSize = threads;
    SetMultiThreadingParams(params);
  }
  OnThreads(const OnThreads&) = delete;
  OnThreads& operator=(const OnThreads&) = delete;
  ~OnThreads() { SetMultiThreadingParams(before_); }

 private:
  AppThreadingParams before_ = GetMultiThreadingParams();
};

std::vector<OverlapPeakInfo> FittedOn(std::uint32_t threads) {
  const OnThreads scope(threads);
  Spectrum spectrum = Doublets();
  Changed changed;
  std::wstring error;
  EXPECT_TRUE(DoOPD(spectrum, changed, error));
  return spectrum.overlapPeaks;
}

// Fails in its own way for each group whose first amplitude tells so.
class FailingEngine final : public OverlapPeakEngine {
 public:
  std::int32_t InitialEstimates(bool /*smooth*/, std::int32_t /*points*/, std::span<const double> /*x*/,
                                std::span<const double> /*y*/, Indexes& peaks) override {
    peaks = {15, 29};
    return kOk;
  }
  std::int32_t FitPeaks(bool /*hookeJeeves*/, std::span<const double> x, std::span<const double> y,
                        std::span<const std::int32_t> apexes, double baseline, double a3,
                        std::vector<FittedGaussian>& results) override {
    if (y[0] < 0.0) return static_cast<std::int32_t>(0x80004000U + static_cast<std::uint32_t>(-y[0]));
    return FitOnApexes({false, {x.begin(), x.end()}, {}, {apexes.begin(), apexes.end()}, baseline, a3},
                       results);
  }
  bool MayWorkAtOnce() const override { return true; }
};

}  // namespace

TEST(OPDThreads, FitTheSameToTheBitOnAnyNumber) {
  const std::vector<OverlapPeakInfo> alone = FittedOn(1);
  EXPECT_EQ(alone.size(), 2 * kGroups);
  for (const std::uint32_t threads : {2U, 8U}) EXPECT_EQ(FittedOn(threads), alone) << threads;
}

TEST(OPDThreads, TheFirstFailureInOrderEndsTheRunAndGroupsBeforeItStay) {
  const FakeEngine whileThisLives;
  FakeEngine::Registry().Register(OverlapPeakEngine::kClassId,
                                  [] { return std::make_unique<FailingEngine>(); });
  Spectrum spectrum = Doublets();
  spectrum.yAxis[kSpacing * 3 + 5] = -3.0;
  spectrum.yAxis[kSpacing * 7 + 5] = -7.0;
  for (const std::uint32_t threads : {1U, 2U, 8U}) {
    const OnThreads scope(threads);
    Changed changed;
    std::wstring error;
    try {
      DoOPD(spectrum, changed, error);
      ADD_FAILURE() << "nothing failed";
    } catch (const TslCommon::ComError& failure) {
      EXPECT_EQ(failure.code, 0x80004003);
    }
    EXPECT_EQ(spectrum.QNumGroups(), 3U) << threads;
  }
}
