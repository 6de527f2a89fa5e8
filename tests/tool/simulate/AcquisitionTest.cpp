// Tests: Acquisition.cpp, ExpectedCounts.cpp, CountIons.cpp.

#include <tool/simulate/Acquisition.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include <tool/simulate/CountIons.h>
#include <tool/simulate/TestMethods.h>

namespace tests {
namespace {

using testing::IsEmpty;
using TslBL::MethodRules;
using TslTool::Acquisition;
using TslTool::ExpectedCounts;
using TslTool::LensModel;
using TslTool::TrueLine;

constexpr double kWidth = 0.6;

double SumOf(const std::vector<double>& counts) { return std::accumulate(counts.begin(), counts.end(), 0.0); }

ExpectedCounts Calibrants(const TslBL::Tune& tune, const LensModel& lenses = {}) {
  return ExpectedCounts(TslTool::CalibrantSample(), tune, kWidth, lenses);
}

TEST(ExpectedCounts, PositiveIonsHaveAProtonMoreAndNegativeOnesLess) {
  const auto positive = Calibrants(ShortTune()).Truth(0.5);
  const auto negative = Calibrants(ShortTune(310, 330, TslCommon::PolarityNegative)).Truth(0.5);
  ASSERT_FALSE(positive.empty());
  ASSERT_FALSE(negative.empty());
  EXPECT_NEAR(positive.front().mz, 322.0481, 1e-4);
  EXPECT_NEAR(negative.front().mz, 322.0481 - 2 * 1.007276, 1e-4);
}

TEST(ExpectedCounts, GrowWithTheDwell) {
  TslBL::Tune tune = ShortTune();
  const double before = SumOf(Calibrants(tune).At(0.5));
  const double rate = Calibrants(tune).Truth(0.5).front().height;
  tune.ControlData.PulseCountDelay *= 3;
  EXPECT_NEAR(SumOf(Calibrants(tune).At(0.5)), 3 * before, 1e-9 * before);
  EXPECT_NEAR(Calibrants(tune).Truth(0.5).front().height, rate, 1e-9 * rate) << "a rate does not";
}

TEST(ExpectedCounts, OfLinesAndBackgroundAreWhatTheLensesLetThrough) {
  const TslBL::Tune tune = ShortTune();
  const LensModel lenses(tune);
  EXPECT_NEAR(Calibrants(tune, lenses).OfBackground()[40] / Calibrants(tune).OfBackground()[40],
              lenses.Transmission(314.0), 1e-9);
  EXPECT_NEAR(Calibrants(tune, lenses).Truth(0.5)[0].height / Calibrants(tune).Truth(0.5)[0].height,
              lenses.Transmission(322.0481), 1e-6);
}

TEST(ExpectedCounts, LinesAreAsWideAsTheResolutionMakesThem) {
  TslBL::Tune tune = ShortTune();
  tune.ControlData.Q1Resolution.Single = 40;
  const auto counts = Calibrants(tune, LensModel(tune)).At(0.5);
  const auto background = Calibrants(tune, LensModel(tune)).OfBackground();
  const auto at = [&](double mz) {
    const auto i = static_cast<std::size_t>(std::lround((mz - 310) / 0.1));
    return counts[i] - background[i];
  };
  const double sigma = kWidth * LensModel(tune).Width(322.0) / 2.35482;
  EXPECT_NEAR(at(321.7) / at(322.0),
              std::exp(-0.5 * (std::pow(0.3481, 2) - std::pow(0.0481, 2)) / (sigma * sigma)), 0.01);
}

// The first and the last step of 20 lie 1 m/z from the centre.
TEST(ExpectedCounts, OfASimAreOnePointWithTheSumOverItsSpan) {
  TslBL::DevTuneRules tune(TslBL::Probes::ESI);
  tune.ControlData.Type = TslBL::Control::Sim;
  tune.ControlData.MZLow = 322.0;
  tune.ControlData.MZHi = 2.0;
  ASSERT_TRUE(tune.IsSimWithSpan());
  const auto counts = Calibrants(tune).At(0.5);
  ASSERT_EQ(counts.size(), 1U);
  const auto scanned = Calibrants(ShortTune()).At(0.5);
  EXPECT_NEAR(counts[0], std::accumulate(scanned.begin() + 110, scanned.begin() + 131, 0.0),
              1e-6 * counts[0]);
  EXPECT_THAT(Calibrants(tune).Truth(0.5), IsEmpty());
}

TEST(CountIons, TheSumIsThatOfTheCounts) {
  const auto raw = TslTool::CountIons({0.0, 5.0, 1e4}, 7, 3);
  EXPECT_EQ(raw.counts[0], 0.0);
  EXPECT_EQ(raw.info.TIC, SumOf(raw.counts));
  EXPECT_EQ(TslTool::CountIons({0.0, 5.0, 1e4}, 7, 3), raw);
  EXPECT_NE(TslTool::CountIons({0.0, 5.0, 1e4}, 7, 4).counts, raw.counts);
}

struct Acquired {
  explicit Acquired(const MethodRules& rules, std::uint64_t seed = 1) {
    Acquisition acquisition(rules, TslTool::CalibrantSample(), kWidth, seed);
    TslBL::RawSpectrum raw;
    std::vector<TrueLine> truth;
    while (acquisition.Next(raw, truth)) {
      spectra.push_back(raw);
      truths.push_back(truth);
    }
  }
  std::vector<TslBL::RawSpectrum> spectra;
  std::vector<std::vector<TrueLine>> truths;
};

MethodRules TwoPeriods() {
  MethodRules rules = OneSpectrum();
  rules.WTPNumLoops(0, 2);
  rules.InsertTimePeriod();
  rules.WTRTune(1, 0, 0, ShortTune(610, 630));
  rules.WTPTimeout(1, 250);
  return rules;
}

TEST(Acquisition, EachSpectrumHasItsTuneItsTimeAndItsPoints) {
  const MethodRules rules = TwoPeriods();
  const Acquired run(rules);
  ASSERT_EQ(run.spectra.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    const auto& [info, counts] = std::pair(run.spectra[i].info, run.spectra[i].counts);
    EXPECT_EQ(info.Id, i + 1);
    EXPECT_EQ(info.TuneId, rules.TuneRuns.at(rules.TimePeriods[i / 2].Sequence[0][0]).TuneId);
    EXPECT_EQ(info.TimeStamp, std::vector({0U, 202U, 403U})[i]);
    EXPECT_EQ(counts.size(), 201U);
  }
  EXPECT_NEAR(run.truths[2][0].mz, 622.029, 1e-3);
}

TEST(Acquisition, EqualSeedsMakeEqualRuns) {
  EXPECT_EQ(Acquired(TwoPeriods(), 5).spectra, Acquired(TwoPeriods(), 5).spectra);
  EXPECT_NE(Acquired(TwoPeriods(), 5).spectra, Acquired(TwoPeriods(), 6).spectra);
}

TEST(Acquisition, WhatIsNotSavedIsMissingAndLeavesTheRestAsItIs) {
  MethodRules rules = TwoPeriods();
  const Acquired whole(rules);
  rules.WTPSave(0, false);
  const Acquired rest(rules);
  ASSERT_EQ(rest.spectra.size(), 1U);
  EXPECT_EQ(rest.spectra[0], whole.spectra[2]);
}

TEST(Acquisition, WhileTheValveLeadsToWasteThereIsBackgroundOnly) {
  MethodRules rules = TwoPeriods();
  TslBL::DiverterValveMethod valve;
  valve.AddState(TslCommon::timebase::MSEC(0), TslCommon::DiverterValve(TslCommon::DiverterValve::kToWaste));
  valve.AddState(TslCommon::timebase::MSEC(403),
                 TslCommon::DiverterValve(TslCommon::DiverterValve::kToSource));
  rules.WValveMethod(valve);
  const Acquired run(rules);
  EXPECT_THAT(run.truths[0], IsEmpty());
  EXPECT_FALSE(run.truths[2].empty());
  const TslBL::Tune& tune = rules.Tunes.begin()->second;
  const double background = SumOf(Calibrants(tune, LensModel(tune)).OfBackground());
  EXPECT_NEAR(run.spectra[0].info.TIC, background, 5 * std::sqrt(background));
  EXPECT_GT(Acquired(TwoPeriods()).spectra[0].info.TIC, 2 * background);
}

}  // namespace
}  // namespace tests
