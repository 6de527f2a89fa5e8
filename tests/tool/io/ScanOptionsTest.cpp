#include <gtest/gtest.h>

#include <tool/io/ScanOptions.h>

namespace tests {
namespace {

using TslTool::Scan;
using TslTool::ScanOptions;
using TslTool::UsageError;

TEST(ScanOptions, WithoutAnyEverythingIsWantedAsItIs) {
  const auto choice = ScanOptions().Choice();
  EXPECT_TRUE(choice.filter.WantsAll());
  EXPECT_EQ(choice.takenAs, Scan::Unknown);
  EXPECT_FALSE(choice.strict);
}

TEST(ScanOptions, EachIsAWish) {
  ScanOptions options;
  options.scan = "1,5-9";
  options.rt = "2-3";
  options.msLevel = 2;
  options.polarity = "negative";
  options.strict = true;
  const auto choice = options.Choice();
  EXPECT_EQ(choice.filter.numbers.size(), 2U);
  EXPECT_EQ(choice.filter.rtFrom, 2.0);
  EXPECT_EQ(choice.filter.rtTo, 3.0);
  EXPECT_EQ(choice.filter.msLevel, 2);
  EXPECT_EQ(choice.filter.polarity, -1);
  EXPECT_TRUE(choice.strict);
  EXPECT_EQ(choice.filter.function, 0U);
  options.function = 3;
  EXPECT_EQ(options.Choice().filter.function, 3U);
  options.polarity = "positive";
  EXPECT_EQ(options.Choice().filter.polarity, 1);
}

TEST(ScanOptions, CalibrationsAreNoPartOfTheSampleUnlessTheirFunctionIsAskedFor) {
  ScanOptions options;
  EXPECT_TRUE(options.Choice().filter.takesCalibrations);
  EXPECT_FALSE(options.ChoiceOfSample().filter.takesCalibrations);
  EXPECT_TRUE(options.ChoiceOfSample().filter.WantsAll());
  options.function = 3;
  EXPECT_TRUE(options.ChoiceOfSample().filter.takesCalibrations);
}

TEST(ScanOptions, FunctionsCountFrom1) {
  ScanOptions options;
  options.function = 0;
  EXPECT_THROW(options.Choice(), UsageError);
}

TEST(ScanOptions, OneMayBeTakenAsProfileOrCentroid) {
  ScanOptions options;
  options.profile = true;
  EXPECT_EQ(options.Choice().takenAs, Scan::Profile);
  options.centroid = true;
  EXPECT_THROW(options.Choice(), UsageError);
  options.profile = false;
  EXPECT_EQ(options.Choice().takenAs, Scan::Centroid);
}

TEST(ScanOptions, LevelsGoFromOneToAHundred) {
  ScanOptions options;
  options.msLevel = 100;
  EXPECT_EQ(options.Choice().filter.msLevel, 100);
  for (const std::uint32_t level : {0U, 101U, 4294967295U}) {
    options.msLevel = level;
    EXPECT_THROW(options.Choice(), UsageError);
  }
}

}  // namespace
}  // namespace tests
