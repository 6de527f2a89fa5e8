#include <gtest/gtest.h>

#include <future>

#include <tool/chain/SmoothFilter.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/spectrum/Spectrum.h>

namespace tests {
namespace {

using TslBL::SmoothParams;
using TslBL::Spectrum;
using TslTool::FilterOf;

Spectrum Smoothed(SmoothParams::Algs alg, std::uint32_t window, int times = 1) {
  Spectrum spectrum;
  spectrum.smoothParams.Alg = alg;
  spectrum.smoothParams.Steps = {{0.0, window}};
  for (int k = 0; k < times; ++k) spectrum.evals.emplace_back(spectrum.smoothParams);
  return spectrum;
}

TEST(SmoothFilter, IsThatOfTheChain) {
  const auto filter = FilterOf(Smoothed(SmoothParams::Mean, 5));
  ASSERT_TRUE(filter);
  ASSERT_EQ(filter->weights.size(), 5U);
  EXPECT_NEAR(filter->weights[0], 0.2, 1e-12);
  EXPECT_LT(filter->gain.Of(6.0), 0.9);
}

TEST(SmoothFilter, WithoutSmoothingIsThePoint) {
  const auto filter = FilterOf(Smoothed(SmoothParams::Mean, 5, 0));
  ASSERT_TRUE(filter);
  EXPECT_EQ(filter->weights, std::vector{1.0});
}

TEST(SmoothFilter, IsUnknownBehindAMedianAndTwoSmoothings) {
  EXPECT_FALSE(FilterOf(Smoothed(SmoothParams::Median, 5)));
  EXPECT_FALSE(FilterOf(Smoothed(SmoothParams::Mean, 5, 2)));
}

TEST(SmoothFilter, IsMadeOnceForTheSpectraOfAFile) {
  EXPECT_EQ(FilterOf(Smoothed(SmoothParams::Mean, 7)), FilterOf(Smoothed(SmoothParams::Mean, 7)));
  EXPECT_NE(FilterOf(Smoothed(SmoothParams::Mean, 7)), FilterOf(Smoothed(SmoothParams::Gaussian, 7)));
}

TEST(SmoothFilter, IsGivenUpAfterSixteenOthers) {
  const std::weak_ptr<const TslTool::SmoothFilter> first = FilterOf(Smoothed(SmoothParams::Mean, 9));
  for (std::uint32_t window = 11; window < 41; window += 2) FilterOf(Smoothed(SmoothParams::Mean, window));
  EXPECT_FALSE(first.expired());
  FilterOf(Smoothed(SmoothParams::Mean, 41));
  EXPECT_TRUE(first.expired());
}

TEST(SmoothFilter, IsOneForAllThreads) {
  std::vector<std::future<std::shared_ptr<const TslTool::SmoothFilter>>> threads;
  for (int k = 0; k < 8; ++k)
    threads.push_back(
        std::async(std::launch::async, [] { return FilterOf(Smoothed(SmoothParams::SavitzkyGolay, 15)); }));
  const auto filter = FilterOf(Smoothed(SmoothParams::SavitzkyGolay, 15));
  for (auto& thread : threads) EXPECT_EQ(thread.get(), filter);
}

}  // namespace
}  // namespace tests
