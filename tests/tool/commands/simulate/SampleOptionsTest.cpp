#include <tool/commands/simulate/SampleOptions.h>

#include <gtest/gtest.h>

#include <tool/commands/simulate/GivenOptions.h>
#include <tool/frame/UsageErrorOf.h>

namespace tests {
namespace {

TslTool::Sample SampleOf(const GivenOptions& given) {
  TslTool::SampleOptions options;
  Give(options, given);
  return options.Get({});
}

TEST(SampleOptions, AreTheDemonstrationSampleUnlessTold) {
  const TslTool::Sample sample = SampleOf({});
  EXPECT_EQ(sample.compounds.size(), TslTool::DemonstrationSample().compounds.size());
  EXPECT_EQ(sample.background, 8.0);
}

TEST(SampleOptions, ProteinsTakeThePlaceOfTheDemonstrationSample) {
  const TslTool::Sample sample = SampleOf({{"--protein", {"a=8000", "b=16951.5:16-20:70"}}});
  ASSERT_EQ(sample.compounds.size(), 2U);
  EXPECT_EQ(sample.compounds[0].name, "a");
  EXPECT_EQ(sample.compounds[1].name, "b");
  EXPECT_EQ(sample.background, 8.0);
}

TEST(SampleOptions, AreTheTuningMixIfItIsAskedFor) {
  EXPECT_EQ(SampleOf({{"--sample", {"calibrants"}}}).compounds[1].name, "phosphazine 322");
  EXPECT_EQ(SampleOf({{"--sample", {"demo"}}}).compounds[0].name, "tributylamine");
}

TEST(SampleOptions, TheBackgroundIsOfAnySample) {
  EXPECT_EQ(SampleOf({{"--background", {"0"}}}).background, 0.0);
  EXPECT_EQ(SampleOf({{"--protein", {"a=8000"}}, {"--background", {"2.5"}}}).background, 2.5);
}

TEST(SampleOptions, AreRefusedWithOptionAndValue) {
  const std::pair<GivenOptions, const char*> cases[] = {
      {{{"--protein", {"a=8000", "a=9000"}}}, "--protein: \"a=9000\": there is another a"},
      {{{"--protein", {"a=8000", "b"}}}, "--protein: \"b\": NAME=MASS is expected, as in myoglobin=16951.5"},
      {{{"--sample", {"calibrants"}}, {"--protein", {"a=8000"}}},
       "--protein: takes the place of a --sample, and both are given"},
      {{{"--background", {"-1"}}}, "--background: -1 is not from 0 to 1000000"},
      {{{"--background", {"1e7"}}}, "--background: 10000000 is not from 0 to 1000000"},
  };
  for (const auto& [given, message] : cases)
    EXPECT_EQ(UsageErrorOf([&given = given] { SampleOf(given); }), message);
}

}  // namespace
}  // namespace tests
