#include <tool/commands/overlap/OverlapOptions.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tests {
namespace {

using TslBL::OPDParams;
using TslTool::OverlapOptions;

// The parameters for options as a user gives them: names and their values.
OPDParams ParamsOf(const std::vector<std::pair<std::string, std::vector<std::string>>>& given,
                   bool isCounted = true) {
  OverlapOptions overlap;
  TslTool::Options options;
  overlap.Declare(options);
  for (const auto& [name, values] : given)
    for (TslTool::Option& option : options.List())
      if (std::ranges::count(option.names, name) > 0) option.take(values);
  return overlap.Params(isCounted);
}

TEST(OverlapOptions, AreThePresetOfTheLibraryButForWhatFindsMore) {
  OPDParams expected = OPDParams::DefaultMS();
  expected.MinAmplPercentCmnEndPt = 10;
  expected.ResolutionThreshold = 4294967295U;
  expected.NumSmoothPts = 1;
  EXPECT_EQ(ParamsOf({}), expected);
}

TEST(OverlapOptions, DropNoEstimateWhereAmplitudesAreNoCounts) {
  EXPECT_EQ(ParamsOf({}, false).MinPeakAmplitude, 0U);
  EXPECT_EQ(ParamsOf({{"--min-amplitude", {"25"}}}, false).MinPeakAmplitude, 25U);
}

TEST(OverlapOptions, SetEachParameter) {
  const OPDParams params = ParamsOf({{"--overlap-range", {"100-200", "300.5-400"}},
                                     {"--min-common-end", {"30"}},
                                     {"--min-resolution", {"900"}},
                                     {"--max-shift", {"0.05"}},
                                     {"--estimate-points", {"7"}},
                                     {"--min-amplitude", {"40"}},
                                     {"--group-peaks", {"4"}},
                                     {"--method", {"hooke"}},
                                     {"--single-group", {}}});
  OPDParams expected;
  expected.FullRange = false;
  expected.Ranges = {{true, 100.0, 200.0}, {true, 300.5, 400.0}};
  expected.MinAmplPercentCmnEndPt = 30;
  expected.ResolutionThreshold = 900;
  expected.MinDeltaCentroidPkMax = 0.05;
  expected.NumSmoothPts = 7;
  expected.MinPeakAmplitude = 40;
  expected.MaxPeaks = 4;
  expected.FittingFunc = OPDParams::HookeJeeves;
  expected.SingleGroup = true;
  EXPECT_EQ(params, expected);
}

TEST(OverlapOptions, RefuseWhatNobodyCanMean) {
  for (const auto& [name, value] :
       std::vector<std::pair<std::string, std::string>>{{"--min-common-end", "101"},
                                                        {"--min-common-end", "-1"},
                                                        {"--max-shift", "-0.1"},
                                                        {"--group-peaks", "1"},
                                                        {"--group-peaks", "201"},
                                                        {"--overlap-range", "x"}})
    EXPECT_THROW(ParamsOf({{name, {value}}}), TslTool::UsageError) << name;
}

}  // namespace
}  // namespace tests
