#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include <tool/commands/average/RunSum.h>
#include <tool/io/RunMaker.h>
#include <tslbl/spectrum/CountRate.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslTool::RunSum;

TEST(RunSum, AddsTheCountsOfOneTuneExactly) {
  RunSum sum;
  sum.Add(RawScan(5, {1, 2, 3}));
  sum.Add(RawScan(6, {1e9, 0, 7}));
  ASSERT_EQ(sum.All().size(), 1U);
  const TslTool::SummedScans& part = sum.All().begin()->second;
  EXPECT_THAT(part.raw.counts, ElementsAre(1e9 + 1, 2, 10));
  EXPECT_EQ(part.raw.info.TIC, 1e9 + 13);
  EXPECT_EQ(part.raw.info.Id, 5U);
  EXPECT_EQ(part.scans, 2U);
}

TEST(RunSum, KeepsOtherTunesAndLengthsApart) {
  RunSum sum;
  sum.Add(RawScan(1, {1, 2, 3}));
  sum.Add(RawScan(2, {1, 2}));
  TslBL::RawSpectrum other = RawScan(3, {1, 2, 3});
  other.info.TuneId = 9;
  sum.Add(other);
  EXPECT_EQ(sum.All().size(), 3U);
}

TEST(RunSum, ItsAverageIsTheRateOfTheSumOverTheNumberOfScans) {
  const SmallRun run;
  const TslTool::RunReader reader(run.Path());
  RunSum sum;
  sum.Add(RawScan(1, {1, 2, 6}));
  sum.Add(RawScan(2, {3, 2, 0}));
  std::vector<double> rates = {4, 4, 6};
  TslBL::AssignCountRateAmpl(rates, DemoTune(), nullptr);
  const auto average = sum.Average(run.Path(), reader);
  EXPECT_THAT(average->yAxis, ElementsAre(rates[0] / 2, rates[1] / 2, rates[2] / 2));
  EXPECT_EQ(average->xAxis.size(), 3U);
}

TEST(RunSum, LengthsOfOneTuneAreBroughtToOneAxis) {
  const SmallRun run;
  const TslTool::RunReader reader(run.Path());
  RunSum sum;
  sum.Add(RawScan(1, {2, 2, 2}));
  sum.Add(RawScan(2, {2, 2, 2, 2, 2}));
  const auto average = sum.Average(run.Path(), reader);
  ASSERT_EQ(average->yAxis.size(), 5U);
  for (const double y : average->yAxis) EXPECT_NEAR(y, average->yAxis[4], 1e-9 * y);
}

TEST(RunSum, ATuneWithoutAnAxisIsAnErrorThatNamesIt) {
  const SmallRun run;
  TslTool::RunReader reader(run.Path());
  RunSum sum;
  TslBL::RawSpectrum unknown = RawScan(3, {1, 2, 3});
  unknown.info.TuneId = 9;
  sum.Add(unknown);
  try {
    sum.Average(run.Path(), reader);
    FAIL() << "it has an average";
  } catch (const TslTool::InputError& error) {
    EXPECT_EQ(error.Place(), "tune 9");
  }
}

TEST(TuneOfSum, CountsForAsManyScans) {
  const std::uint32_t each = DemoTune().ControlData.ScansPerSpec;
  EXPECT_EQ(TslTool::TuneOfSum(DemoTune(), 7).ControlData.ScansPerSpec, 7 * each);
  EXPECT_THROW(TslTool::TuneOfSum(DemoTune(), 65536), std::runtime_error);
}

}  // namespace
}  // namespace tests
