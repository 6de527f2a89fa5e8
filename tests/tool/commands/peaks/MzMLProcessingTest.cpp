#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <tool/commands/peaks/MzMLProcessing.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>

namespace tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Key;
using testing::Not;
using testing::Pair;
using TslBL::CurveEval;

struct Method {
  std::vector<std::string> terms;
  std::vector<std::pair<std::string, std::string>> params;
};

std::vector<Method> MethodsOf(const std::vector<CurveEval>& chain,
                              std::optional<double> scale = std::nullopt) {
  std::vector<Method> methods;
  for (const TslTool::ProcessingMethod& told : TslTool::MethodsOf({"", {}, chain, scale})) {
    methods.push_back({{}, told.params});
    for (const TslTool::CvTerm& term : told.terms) methods.back().terms.emplace_back(term.accession);
  }
  return methods;
}

TEST(MzMLProcessing, HasAMethodForEachCommandThatChangesTheDataInTheirOrder) {
  const auto methods =
      MethodsOf({CurveEval(CurveEval::AerosolFilter()), CurveEval(TslBL::SmoothParams()),
                 CurveEval(TslBL::BaselineParams()), CurveEval(CurveEval::BaselineSubtract()),
                 CurveEval(TslBL::ThresholdParams()), CurveEval(CurveEval::ThresholdSubtract()),
                 CurveEval(TslBL::NoiseParams()), CurveEval(TslBL::PeakDetectParams::DefaultMS())});
  ASSERT_EQ(methods.size(), 6U);
  EXPECT_THAT(methods[0].terms, ElementsAre("MS:1001486"));
  EXPECT_THAT(methods[1].terms, ElementsAre("MS:1000592"));
  EXPECT_THAT(methods[2].terms, ElementsAre("MS:1000593"));
  EXPECT_THAT(methods[3].terms, ElementsAre("MS:1000594"));
  EXPECT_THAT(methods[4].terms, ElementsAre("MS:1000035", "MS:1000802"));
  EXPECT_THAT(methods[5].terms, ElementsAre("MS:1000544"));
}

TEST(MzMLProcessing, TellsTheNumbersOfACommandByTheirPlacesInAChainFile) {
  TslBL::SmoothParams smooth = TslBL::SmoothParams::DefaultMS();
  smooth.Passes = 7;
  const auto methods = MethodsOf({CurveEval(smooth)});
  ASSERT_EQ(methods.size(), 2U);
  EXPECT_THAT(methods[0].params, Contains(Pair("Smooth/Passes", "7")));
  EXPECT_THAT(methods[0].params, Contains(Key("Smooth/Steps/Step@Size")));
  EXPECT_THAT(methods[1].params, testing::IsEmpty());
}

TEST(MzMLProcessing, WhatOnlyMeasuresStandsWithTheStepThatFollows) {
  TslBL::BaselineParams baseline;
  baseline.SegSize = 77;
  TslBL::NoiseParams noise;
  noise.SegSize = 55;
  const std::vector<CurveEval> measured = {CurveEval(baseline), CurveEval(noise)};
  for (const bool isDetected : {true, false}) {
    std::vector<CurveEval> chain = measured;
    if (isDetected) chain.emplace_back(TslBL::PeakDetectParams());
    const auto methods = MethodsOf(chain);
    EXPECT_EQ(methods.size(), isDetected ? 2U : 1U);
    EXPECT_THAT(methods[0].params, Contains(Pair("Baseline/SegSize", "77")));
    EXPECT_THAT(methods[0].params, Contains(Pair("Noise/SegSize", "55")));
  }
}

TEST(MzMLProcessing, LimitsThatAreNotInUseAreLeftOut) {
  TslBL::PeakDetectParams detect;
  detect.SNInUse = true;
  detect.SN = 12;
  detect.PeakCntInUse = false;
  const auto methods = MethodsOf({CurveEval(detect)});
  EXPECT_THAT(methods[0].params, Contains(Pair("PeakDetect/SN", "12")));
  EXPECT_THAT(methods[0].params, Not(Contains(Key("PeakDetect/SN@InUse"))));
  EXPECT_THAT(methods[0].params, Not(Contains(Key("PeakDetect/PeakCnt"))));
}

TEST(MzMLProcessing, BeginsWithTheMultiplicationOfTheAmplitudes) {
  const auto methods = MethodsOf({CurveEval(TslBL::SmoothParams())}, 2.5);
  ASSERT_EQ(methods.size(), 3U);
  EXPECT_THAT(methods[0].terms, ElementsAre("MS:1001484"));
  EXPECT_THAT(methods[0].params, ElementsAre(Pair("factor", "2.5")));
  EXPECT_THAT(methods[1].terms, ElementsAre("MS:1000592"));
}

TEST(MzMLProcessing, OfNoCommandIsTheConversion) {
  const auto methods = MethodsOf({});
  ASSERT_EQ(methods.size(), 1U);
  EXPECT_THAT(methods[0].terms, ElementsAre("MS:1000544"));
}

}  // namespace
}  // namespace tests
