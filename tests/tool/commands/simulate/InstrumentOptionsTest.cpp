#include <tool/commands/simulate/InstrumentOptions.h>

#include <gtest/gtest.h>

#include <tool/commands/simulate/GivenOptions.h>
#include <tool/frame/UsageErrorOf.h>

namespace tests {
namespace {

using TslTool::Instrument;

Instrument InstrumentOf(const GivenOptions& given) {
  TslTool::InstrumentOptions options;
  Give(options, given);
  return options.Get();
}

TEST(InstrumentOptions, AreTheDemonstrationInstrumentUnlessTold) {
  const Instrument instrument = InstrumentOf({});
  EXPECT_EQ(instrument.mzLow, 100.0);
  EXPECT_EQ(instrument.mzHigh, 1100.0);
  EXPECT_EQ(instrument.mzStep, 0.05);
  EXPECT_EQ(instrument.width, 0.6);
}

TEST(InstrumentOptions, SetRangeStepAndWidth) {
  const Instrument instrument =
      InstrumentOf({{"--mz", {"500.5-2000"}}, {"--mz-step", {"0.1"}}, {"--width", {"0.4"}}});
  EXPECT_EQ(instrument.mzLow, 500.5);
  EXPECT_EQ(instrument.mzHigh, 2000.0);
  EXPECT_EQ(instrument.mzStep, 0.1);
  EXPECT_EQ(instrument.width, 0.4);
}

TEST(InstrumentOptions, TakeTheLimitsThemselves) {
  for (const GivenOptions& given : {GivenOptions{{"--mz", {"5-3000"}}},
                                    {{"--width", {"0.2"}}},
                                    {{"--width", {"10"}}},
                                    {{"--mz-step", {"0.15"}}},
                                    {{"--mz-step", {"2.5"}}, {"--width", {"10"}}},
                                    {{"--mz", {"500-500.6"}}}})
    EXPECT_EQ(UsageErrorOf([&] { InstrumentOf(given); }), "") << given.front().second.front();
}

TEST(InstrumentOptions, AreRefusedWithOptionValueAndLimit) {
  const std::pair<GivenOptions, const char*> cases[] = {
      {{{"--mz", {"4-100"}}}, "--mz: \"4-100\" is not within what the instrument scans, m/z 5 to 3000"},
      {{{"--mz", {"5-3001"}}}, "--mz: \"5-3001\" is not within what the instrument scans, m/z 5 to 3000"},
      {{{"--mz", {"900-500"}}}, "--mz: \"900-500\" ends before it begins"},
      {{{"--mz", {"500-"}}}, "--mz: \"\" is not a number"},
      {{{"--mz", {"500"}}}, "--mz: \"500\" is narrower than a line, 0.6 m/z"},
      {{{"--mz-step", {"0.01"}}}, "--mz-step: 0.01 is not from 0.05 to 2995 m/z"},
      {{{"--mz-step", {"0.12"}}}, "--mz-step: 0.12 is no multiple of the instrument's 0.05 m/z"},
      {{{"--mz-step", {"0.2"}}},
       "--mz-step: steps of 0.2 m/z give a line of the usual width, 0.6 m/z, fewer than 4 points; --width "
       "0.8 is the "
       "least for them"},
      {{{"--width", {"0.02"}}},
       "--width: a line of 0.02 m/z has fewer than 4 points in steps of 0.05 m/z; the least width is 0.2"},
      {{{"--width", {"0.3"}}, {"--mz-step", {"0.1"}}},
       "--width: a line of 0.3 m/z has fewer than 4 points in steps of 0.1 m/z; the least width is 0.4"},
      {{{"--width", {"-1"}}},
       "--width: a line of -1 m/z has fewer than 4 points in steps of 0.05 m/z; the least width is 0.2"},
      {{{"--width", {"10.5"}}}, "--width: 10.5 is more than 10 m/z"},
  };
  for (const auto& [given, message] : cases)
    EXPECT_EQ(UsageErrorOf([&given = given] { InstrumentOf(given); }), message);
}

}  // namespace
}  // namespace tests
