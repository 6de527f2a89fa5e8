#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/chain/ChainFile.h>
#include <tool/chain/ChainOptions.h>
#include <tool/frame/CommandLine.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>

namespace tests {
namespace {

using TslBL::BaselineParams;
using TslBL::CurveEval;
using TslBL::NoiseParams;
using TslBL::PeakDetectParams;
using TslBL::SmoothParams;
using TslTool::ChainDefaults;
using TslTool::ChainOptions;
using Chain = std::vector<CurveEval>;

// As for peaks of 13 points.
const ChainDefaults kDefaults = {"savgol:15:2", 520, 5, std::nullopt, "peaks are 13.0 points wide"};

struct Parsed {
  Chain chain;
  std::string derived;
  bool needsDefaults = false;
  bool toleratesOffset = false;
  std::optional<TslTool::RealRange> stretch;
  std::string error;
};

Parsed Parse(std::vector<std::string> words, const ChainDefaults& defaults = kDefaults) {
  Parsed parsed;
  ChainOptions chain;
  TslTool::Command command{.name = "try",
                           .summary = "",
                           .examples = "",
                           .declare = [&](TslTool::Options& options) { chain.Declare(options); },
                           .run =
                               [&](const TslTool::Options& options) {
                                 try {
                                   parsed.chain = chain.Chain(options, defaults);
                                   parsed.derived = chain.Derived(defaults);
                                   parsed.needsDefaults = chain.NeedsDefaults();
                                   parsed.toleratesOffset = chain.ToleratesOffset();
                                   parsed.stretch = chain.NoiseStretch();
                                 } catch (const TslTool::UsageError& e) {
                                   parsed.error = e.what();
                                 }
                                 return 0;
                               }};
  words.insert(words.begin(), "try");
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  EXPECT_EQ(TslTool::RunCommandLine(static_cast<int>(argv.size()), argv.data(), command), 0);
  return parsed;
}

SmoothParams Smooth(SmoothParams::Algs alg, std::uint32_t size, std::uint32_t order = 2) {
  SmoothParams p;
  p.Alg = alg;
  p.Order = order;
  p.Steps = {{0.0, size}};
  return p;
}

BaselineParams Baseline(BaselineParams::Algs alg, std::uint32_t segment = 520) {
  BaselineParams p;
  p.Alg = alg;
  p.SegSize = segment;
  return p;
}

NoiseParams Noise(NoiseParams::AutoAlgs alg, std::uint32_t segment = 520, std::uint32_t median = 0) {
  NoiseParams p;
  p.AlgAuto = alg;
  p.SegSize = segment;
  p.Median = median;
  return p;
}

NoiseParams NoiseOn(NoiseParams::ManAlgs alg, double from, double to) {
  NoiseParams p;
  p.Auto = false;
  p.AlgMan = alg;
  p.Start = from;
  p.End = to;
  return p;
}

PeakDetectParams Detect() {
  PeakDetectParams p;
  p.SN = 5;
  p.MaxValley = 50.0;
  p.Retention = 30.0;
  return p;
}

// The usual chain with one part changed.
Chain With(const SmoothParams& smooth) {
  return Chain{CurveEval(smooth), CurveEval(Baseline(BaselineParams::LinearFitSD)),
               CurveEval(Noise(NoiseParams::AutoAlgs::LinearFitSD)), CurveEval(Detect())};
}
Chain With(const BaselineParams& baseline) {
  Chain chain = With(Smooth(SmoothParams::SavitzkyGolay, 15));
  chain[1] = CurveEval(baseline);
  return chain;
}
Chain With(const NoiseParams& noise) {
  Chain chain = With(Smooth(SmoothParams::SavitzkyGolay, 15));
  chain[2] = CurveEval(noise);
  return chain;
}
Chain With(const PeakDetectParams& detect) {
  Chain chain = With(Smooth(SmoothParams::SavitzkyGolay, 15));
  chain[3] = CurveEval(detect);
  return chain;
}

TEST(ChainOptions, TheUsualChainHasTheDefaults) {
  EXPECT_EQ(Parse({}).chain, With(Smooth(SmoothParams::SavitzkyGolay, 15)));
}

TEST(ChainOptions, ADefaultLeastWidthIsALimitInUse) {
  ChainDefaults defaults = kDefaults;
  defaults.minWidth = 0.3;
  PeakDetectParams expected = Detect();
  expected.FWHMGTInUse = true;
  expected.FWHMGT = 0.3;
  EXPECT_EQ(Parse({}, defaults).chain, With(expected));
}

TEST(ChainOptions, ADefaultLeastWidthGoesWithTheDefaultSmoothing) {
  ChainDefaults defaults = kDefaults;
  defaults.minWidth = 0.3;
  EXPECT_EQ(Parse({"--smooth", "savgol:15:2"}, defaults).chain,
            With(Smooth(SmoothParams::SavitzkyGolay, 15)));
}

TEST(ChainOptions, ADefaultLeastWidthYieldsToAMostWidthBelowIt) {
  ChainDefaults defaults = kDefaults;
  defaults.minWidth = 0.3;
  PeakDetectParams expected = Detect();
  expected.FWHMLTInUse = true;
  expected.FWHMLT = 0.2;
  EXPECT_EQ(Parse({"--max-width", "0.2"}, defaults).chain, With(expected));
}

TEST(ChainOptions, WhatTheDefaultsDecideIsToldAsSwitches) {
  ChainDefaults defaults = kDefaults;
  defaults.minWidth = 0.3;
  EXPECT_EQ(Parse({}, defaults).derived,
            "--smooth savgol:15:2 --baseline linear:520 --noise linear:520 --sn 5 --min-width 0.3 "
            "(peaks are 13.0 points wide)");
  EXPECT_EQ(Parse({"--smooth", "off", "--noise", "valley:9", "--sn", "3"}, defaults).derived,
            "--baseline linear:520 (peaks are 13.0 points wide)");
}

TEST(ChainOptions, WhatTheUserDecidesIsNotTold) {
  EXPECT_EQ(Parse({"--smooth", "off", "--baseline", "3", "--noise", "linear:9", "--sn", "3"}).derived, "");
}

TEST(ChainOptions, TheSegmentIsADefaultOfEachWayThatHasOne) {
  for (const char* how : {"linear", "adaptive", "valley"})
    EXPECT_EQ(Parse({"--baseline", how}).chain, Parse({"--baseline", std::string(how) + ":520"}).chain)
        << how;
  for (const char* how : {"linear", "valley", "dispersion", "median"})
    EXPECT_EQ(Parse({"--noise", how}).chain, Parse({"--noise", std::string(how) + ":520"}).chain) << how;
}

struct SmoothCase {
  const char* text;
  SmoothParams params;
};

TEST(ChainOptions, SmoothNamesFilterWidthAndOrder) {
  for (const auto& [text, params] : {SmoothCase{"mean", Smooth(SmoothParams::Mean, 5)},
                                     SmoothCase{"mean:9", Smooth(SmoothParams::Mean, 9)},
                                     SmoothCase{"median:3", Smooth(SmoothParams::Median, 3)},
                                     SmoothCase{"gaussian:4", Smooth(SmoothParams::Gaussian, 4)},
                                     SmoothCase{"savgol:11", Smooth(SmoothParams::SavitzkyGolay, 11)},
                                     SmoothCase{"savgol:9:4", Smooth(SmoothParams::SavitzkyGolay, 9, 4)},
                                     SmoothCase{"savgol:9:0", Smooth(SmoothParams::SavitzkyGolay, 9, 0)}})
    EXPECT_EQ(Parse({"--smooth", text}).chain, With(params)) << text;
}

TEST(ChainOptions, SmoothOffLeavesTheStepOut) {
  const Chain chain = Parse({"--smooth", "off"}).chain;
  ASSERT_EQ(chain.size(), 3U);
  EXPECT_EQ(chain.front(), CurveEval(Baseline(BaselineParams::LinearFitSD)));
}

TEST(ChainOptions, BaselineNamesItsAlgorithmOrAConstant) {
  EXPECT_EQ(Parse({"--baseline", "linear:100"}).chain, With(Baseline(BaselineParams::LinearFitSD, 100)));
  EXPECT_EQ(Parse({"--baseline", "valley:60"}).chain, With(Baseline(BaselineParams::VFBaseline, 60)));
  BaselineParams all = Baseline(BaselineParams::LinearFitSD, 100);
  all.Points = 7;
  all.Width = 4;
  EXPECT_EQ(Parse({"--baseline", "linear:100:7:4"}).chain, With(all));
  BaselineParams adaptive = Baseline(BaselineParams::Adaptive, 90);
  adaptive.Window = 20;
  EXPECT_EQ(Parse({"--baseline", "adaptive:90:20"}).chain, With(adaptive));
  BaselineParams constant;
  constant.Auto = false;
  constant.ManVal = -2.5;
  EXPECT_EQ(Parse({"--baseline", "-2.5"}).chain, With(constant));
}

TEST(ChainOptions, NoiseNamesItsAlgorithmOrAStretch) {
  using Auto = NoiseParams::AutoAlgs;
  using Manual = NoiseParams::ManAlgs;
  EXPECT_EQ(Parse({"--noise", "linear:99"}).chain, With(Noise(Auto::LinearFitSD, 99)));
  EXPECT_EQ(Parse({"--noise", "valley:99"}).chain, With(Noise(Auto::VFNoise, 99)));
  EXPECT_EQ(Parse({"--noise", "dispersion"}).chain, With(Noise(Auto::Dispersion)));
  EXPECT_EQ(Parse({"--noise", "median:99:3"}).chain, With(Noise(Auto::Median, 99, 3)));
  EXPECT_EQ(Parse({"--noise", "median"}).chain, With(Noise(Auto::Median, 520, 5)));
  EXPECT_EQ(Parse({"--noise", "6sd:1-2"}).chain, With(NoiseOn(Manual::SixTimesSD, 1, 2)));
  EXPECT_EQ(Parse({"--noise", "peak-to-peak:1.5-2"}).chain, With(NoiseOn(Manual::PeakToPeak, 1.5, 2)));
}

TEST(ChainOptions, TheStretchOfTheNoiseCanBeAskedFor) {
  EXPECT_EQ(Parse({"--noise", "valley"}).stretch, std::nullopt);
  const auto stretch = Parse({"--noise", "6sd:100-120"}).stretch;
  ASSERT_TRUE(stretch);
  EXPECT_EQ(stretch->from, 100);
  EXPECT_EQ(stretch->to, 120);
}

struct LimitCase {
  std::vector<std::string> words;
  void (*change)(PeakDetectParams&);
};

TEST(ChainOptions, EachLimitIsSetAndInUse) {
  using P = PeakDetectParams;
  for (const auto& [words, change] :
       {LimitCase{{"--sn", "9"}, [](P& p) { p.SN = 9; }},
        LimitCase{{"--min-rel-ampl", "1.5"}, [](P& p) { p.RelAmplInUse = true, p.RelAmpl = 1.5; }},
        LimitCase{{"--min-area", "20"}, [](P& p) { p.AbsAreaInUse = true, p.AbsArea = 20; }},
        LimitCase{{"--min-rel-area", "3"}, [](P& p) { p.RelAreaInUse = true, p.RelArea = 3; }},
        LimitCase{{"--min-width", "0.2"}, [](P& p) { p.FWHMGTInUse = true, p.FWHMGT = 0.2; }},
        LimitCase{{"--max-width", "2"}, [](P& p) { p.FWHMLTInUse = true, p.FWHMLT = 2; }},
        LimitCase{{"--max-peaks", "7"}, [](P& p) { p.PeakCntInUse = true, p.PeakCnt = 7; }},
        LimitCase{{"--valley", "10"}, [](P& p) { p.MaxValley = 10; }},
        LimitCase{{"--position", "top"}, [](P& p) { p.RetentionType = P::PeakTop, p.Retention = 25; }},
        LimitCase{{"--position", "centroid:75"}, [](P& p) { p.Retention = 75; }},
        LimitCase{{"--range", "300-400"},
                  [](P& p) { p.FullSearch = false, p.SearchStart = 300, p.SearchEnd = 400; }},
        LimitCase{{"--sorted"}, [](P& p) { p.FindFeatureAlgorithm = P::Sorted; }}}) {
    PeakDetectParams expected = Detect();
    change(expected);
    EXPECT_EQ(Parse(words).chain, With(expected)) << words[0];
  }
}

TEST(ChainOptions, AThresholdIsAStepAndALimit) {
  const Chain chain = Parse({"--threshold", "12.5"}).chain;
  TslBL::ThresholdParams threshold;
  threshold.Value = 12.5;
  PeakDetectParams detect = Detect();
  detect.ThresholdInUse = true;
  ASSERT_EQ(chain.size(), 5U);
  EXPECT_EQ(chain[3], CurveEval(threshold));
  EXPECT_EQ(chain[4], CurveEval(detect));
}

TEST(ChainOptions, TheAerosolFilterComesFirst) {
  EXPECT_EQ(Parse({"--aerosol"}).chain.front(), CurveEval(CurveEval::AerosolFilter()));
}

// A subtraction cuts off the lower half of the noise, so the noise is measured before it.
TEST(ChainOptions, TheBaselineIsSubtractedBehindTheNoise) {
  const Chain chain = Parse({"--subtract-baseline"}).chain;
  ASSERT_EQ(chain.size(), 5U);
  EXPECT_EQ(chain[2], CurveEval(Noise(NoiseParams::AutoAlgs::LinearFitSD)));
  EXPECT_EQ(chain[3], CurveEval(CurveEval::BaselineSubtract()));
}

TEST(ChainOptions, WhatIsMalformedIsNamedWithItsOption) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"--smooth", "boxcar"},
       "--smooth: \"boxcar\": it is not one of auto, mean, median, gaussian, savgol, off"},
      {{"--smooth", "mean:x"}, "--smooth: \"x\" is not a whole number from 0 to 4294967295"},
      {{"--smooth", "mean:"}, "--smooth: \"\" is not a whole number from 0 to 4294967295"},
      {{"--smooth", "mean:1"}, "--smooth: \"mean:1\": each number must be at least 2"},
      {{"--smooth", "mean:5:2"}, "--smooth: \"mean:5:2\": there are more parts than mean takes"},
      {{"--smooth", "off:5"}, "--smooth: \"off:5\": there are more parts than off takes"},
      {{"--smooth", "savgol:5:4"},
       "--smooth: \"savgol:5:4\": it changes nothing, the width must be larger than the order by 2"},
      {{"--baseline", "none"},
       "--baseline: \"none\": it is not one of linear, adaptive, valley, or a number"},
      {{"--baseline", "linear:0"}, "--baseline: \"linear:0\": each number must be at least 1"},
      {{"--baseline", "5:2"}, "--baseline: \"5:2\": there are more parts than 5 takes"},
      {{"--noise", "loud"},
       "--noise: \"loud\": it is not one of linear, valley, dispersion, median, peak-to-peak, 6sd"},
      {{"--noise", "6sd"}, "--noise: \"6sd\": it needs a range of m/z, as in 6sd:100-120"},
      {{"--noise", "6sd:9-1"}, "--noise: \"9-1\" ends before it begins"},
      {{"--noise", "valley:1:2"}, "--noise: \"valley:1:2\": there are more parts than valley takes"},
      {{"--position", "left"}, "--position: \"left\": it is not one of top, centroid"},
      {{"--position", "centroid:101"}, "--position: a percentage is from 0 to 100"},
      {{"--valley", "-1"}, "--valley: a percentage is from 0 to 100"},
      {{"--min-rel-ampl", "101"}, "--min-rel-ampl: a percentage is from 0 to 100"},
      {{"--min-rel-area", "-0.1"}, "--min-rel-area: a percentage is from 0 to 100"},
      {{"--max-peaks", "0"}, "--max-peaks: there must be at least one"},
      {{"--range", "a-b"}, "--range: \"a\" is not a number"}};
  for (const auto& [words, error] : cases) EXPECT_EQ(Parse(words).error, error);
}

TEST(ChainOptions, AChainFileReplacesTheSwitches) {
  const Chain chain = {CurveEval(Smooth(SmoothParams::Mean, 3))};
  const TempFile file("chain.xml", TslTool::ChainToXml(chain));
  EXPECT_EQ(Parse({"--chain", file.Path()}).chain, chain);
  EXPECT_EQ(Parse({"--chain", file.Path()}).derived, "");
}

TEST(ChainOptions, AChainFileAndEachSwitchExcludeEachOther) {
  for (const char* option : {"--smooth", "--baseline", "--noise", "--position", "--range"})
    EXPECT_EQ(Parse({"--chain", "c.xml", option, "x"}).error,
              std::string(option) + " and --chain exclude each other");
  for (const char* option : {"--threshold", "--sn", "--min-rel-ampl", "--min-area", "--min-rel-area",
                             "--min-width", "--max-width", "--max-peaks", "--valley"})
    EXPECT_EQ(Parse({"--chain", "c.xml", option, "1"}).error,
              std::string(option) + " and --chain exclude each other");
  for (const char* option : {"--aerosol", "--subtract-baseline", "--sorted"})
    EXPECT_EQ(Parse({"--chain", "c.xml", option}).error,
              std::string(option) + " and --chain exclude each other");
}

TEST(ChainOptions, NeedDefaultsUnlessEveryNumberIsGiven) {
  const TempFile file("chain.xml", TslTool::ChainToXml({CurveEval(Smooth(SmoothParams::Mean, 3))}));
  EXPECT_FALSE(Parse({"--chain", file.Path()}).needsDefaults);
  const std::vector<std::string> all = {"--smooth", "off",      "--baseline", "0",
                                        "--noise",  "valley:9", "--sn",       "5"};
  EXPECT_FALSE(Parse(all).needsDefaults);
  for (std::size_t left = 0; left < all.size(); left += 2) {
    std::vector<std::string> some = all;
    some.erase(some.begin() + static_cast<std::ptrdiff_t>(left),
               some.begin() + static_cast<std::ptrdiff_t>(left + 2));
    EXPECT_TRUE(Parse(some).needsDefaults) << all[left];
  }
}

TEST(ChainOptions, WithALevelOrWithoutSmoothingTolerateNoOffset) {
  const TempFile file("chain.xml", TslTool::ChainToXml({CurveEval(Smooth(SmoothParams::Mean, 3))}));
  EXPECT_TRUE(Parse({}).toleratesOffset);
  EXPECT_TRUE(Parse({"--baseline", "adaptive:300", "--sn", "4"}).toleratesOffset);
  const std::vector<std::string> levels[] = {{"--threshold", "5"},    {"--baseline", "5"},
                                             {"--min-rel-ampl", "5"}, {"--subtract-baseline"},
                                             {"--smooth", "off"},     {"--chain", file.Path()}};
  for (const auto& words : levels) EXPECT_FALSE(Parse(words).toleratesOffset) << words[0];
}

}  // namespace
}  // namespace tests
