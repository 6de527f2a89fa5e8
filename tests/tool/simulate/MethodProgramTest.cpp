#include <tool/simulate/MethodProgram.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include <tool/simulate/TestMethods.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslBL::MethodRules;
using TslTool::MethodProgram;
using TslTool::ProgrammedSpectrum;

std::vector<ProgrammedSpectrum> AllOf(const MethodRules& rules) {
  MethodProgram program(rules);
  std::vector<ProgrammedSpectrum> all;
  while (const auto spectrum = program.Next()) all.push_back(*spectrum);
  return all;
}

template <class Value>
std::vector<Value> Each(const std::vector<ProgrammedSpectrum>& all, Value ProgrammedSpectrum::*member) {
  std::vector<Value> values;
  for (const ProgrammedSpectrum& spectrum : all) values.push_back(spectrum.*member);
  return values;
}

std::vector<std::uint32_t> TimesOf(const MethodRules& rules) {
  return Each(AllOf(rules), &ProgrammedSpectrum::milliseconds);
}

// 20 m/z at 0.1 are 201 steps of 1 ms; the way back over 20 m/z takes 20 + 510 us.
TEST(MethodProgram, ASpectrumTakesWhatTheRulesSay) {
  MethodRules rules = OneSpectrum();
  EXPECT_EQ(rules.QSIDuration(0, 0), 0.20153);
  rules.WTPNumLoops(0, 4);
  EXPECT_THAT(TimesOf(rules), ElementsAre(0, 202, 403, 605));
  EXPECT_DOUBLE_EQ(MethodProgram(rules).Seconds(), 4 * 0.20153);
}

TEST(MethodProgram, ATimePeriodWithoutEndTakesItsLoops) {
  MethodRules rules = OneSpectrum();
  rules.InsertSeqItem(0);
  rules.WTRTune(0, 1, 0, ShortTune(100, 120));
  rules.WTRNumRecs(0, 1, 0, 2);
  rules.WTPNumLoops(0, 2);
  const auto all = AllOf(rules);
  const std::uint32_t first = rules.TuneRuns.at(1).TuneId;
  const std::uint32_t second = rules.TuneRuns.at(rules.TimePeriods[0].Sequence[1][0]).TuneId;
  EXPECT_THAT(Each(all, &ProgrammedSpectrum::tuneId),
              ElementsAre(first, second, second, first, second, second));
  EXPECT_THAT(Each(all, &ProgrammedSpectrum::index), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(MethodProgram, WhatIsNotCompleteWhenTheTimeIsOverIsNotAcquired) {
  MethodRules rules = OneSpectrum();
  const struct {
    std::uint32_t timeout;
    std::size_t spectra;
  } kCases[] = {{201, 0}, {202, 1}, {403, 1}, {404, 2}, {1007, 4}, {1008, 5}};
  for (const auto& [timeout, spectra] : kCases) {
    rules.WTPTimeout(0, timeout);
    EXPECT_EQ(AllOf(rules).size(), spectra) << timeout;
    EXPECT_EQ(MethodProgram(rules).Count(), spectra) << timeout;
  }
}

TEST(MethodProgram, TimePeriodsBeginWhenTheTimeOfTheOneBeforeIsOver) {
  MethodRules rules = OneSpectrum();
  rules.WTPTimeout(0, 500);
  rules.InsertTimePeriod();
  rules.WTRTune(1, 0, 0, ShortTune());
  rules.WTPTimeout(1, 300);
  rules.InsertTimePeriod();
  rules.WTRTune(2, 0, 0, ShortTune());
  rules.WTPTimeout(2, 210);
  EXPECT_THAT(TimesOf(rules), ElementsAre(0, 202, 500, 800));
  EXPECT_EQ(MethodProgram(rules).Seconds(), rules.QDuration());
  EXPECT_THAT(MethodProgram(rules).Spectra(), ElementsAre(2, 1, 1));
}

// 0.5 s for the change, in the item that comes behind it and, round and round, in the first one. The
// capillary exit turns from 160 V to -160 V, for which both spectra rest 5 ms.
TEST(MethodProgram, AChangeOfPolarityTakesItsTimeBeforeTheSpectrum) {
  MethodRules rules = OneSpectrum();
  rules.InsertSeqItem(0);
  rules.WTRTune(0, 1, 0, ShortTune(310, 330, TslCommon::PolarityNegative));
  rules.WTPNumLoops(0, 1);
  EXPECT_THAT(TimesOf(rules), ElementsAre(500, 1206));
  EXPECT_NEAR(MethodProgram(rules).Seconds(), rules.QSIDuration(0, 0) + rules.QSIDuration(0, 1), 1e-9);
}

TEST(MethodProgram, ATimePeriodOfTheOtherPolarityBeginsAfterTheChange) {
  MethodRules rules = OneSpectrum();
  rules.WTPTimeout(0, 300);
  rules.InsertTimePeriod();
  rules.WTRTune(1, 0, 0, ShortTune(310, 330, TslCommon::PolarityNegative));
  rules.WTPTimeout(1, 750);
  ASSERT_EQ(rules.QTPSettleDelay(1), 500000U);
  EXPECT_THAT(TimesOf(rules), ElementsAre(0, 800));
}

TEST(MethodProgram, WhatIsNotSavedIsAcquiredAllTheSame) {
  MethodRules rules = OneSpectrum();
  rules.InsertTimePeriod();
  rules.WTRTune(1, 0, 0, ShortTune());
  rules.WTPTimeout(1, 500);
  rules.WTPSave(0, false);
  EXPECT_THAT(Each(AllOf(rules), &ProgrammedSpectrum::isSaved), ElementsAre(false, true, true));
  EXPECT_EQ(MethodProgram(rules).Count(), 3U);
  EXPECT_EQ(MethodProgram(rules).Saved(), 2U);
}

TEST(MethodProgram, TheValveStandsAsItDoesWhenASpectrumBegins) {
  MethodRules rules = OneSpectrum();
  rules.WTPNumLoops(0, 5);
  TslBL::DiverterValveMethod valve;
  valve.AddState(TslCommon::timebase::MSEC(0), TslCommon::DiverterValve(TslCommon::DiverterValve::kToWaste));
  valve.AddState(TslCommon::timebase::MSEC(403),
                 TslCommon::DiverterValve(TslCommon::DiverterValve::kToSource));
  valve.AddState(TslCommon::timebase::MSEC(700),
                 TslCommon::DiverterValve(TslCommon::DiverterValve::kToWaste));
  rules.WValveMethod(valve);
  EXPECT_THAT(Each(AllOf(rules), &ProgrammedSpectrum::isToWaste),
              ElementsAre(true, true, false, false, true));
}

TEST(MethodProgram, WithoutAValveProgramTheSampleReachesTheSource) {
  MethodRules rules = OneSpectrum();
  rules.WValveMethod({});
  EXPECT_FALSE(AllOf(rules).front().isToWaste);
}

std::string RefusalOf(const MethodRules& rules) {
  try {
    MethodProgram program(rules);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(MethodProgram, WhatNobodyCouldMeanIsRefusedAtOnce) {
  MethodRules many = OneSpectrum();
  many.WTPNumLoops(0, 1000000);
  EXPECT_EQ(RefusalOf(many), "");
  many.WTPNumLoops(0, 1000001);
  EXPECT_THAT(RefusalOf(many), HasSubstr("the method takes about 1e+06 spectra of"));
  MethodRules records = OneSpectrum();
  records.WTRNumRecs(0, 0, 0, 2000000);
  EXPECT_THAT(RefusalOf(records), HasSubstr("the method takes about 2e+06 spectra"));
  records.WTRNumRecs(0, 0, 0, 4294967295);
  EXPECT_EQ(RefusalOf(records), "the method takes 8.65565e+08 s, and times have room for 4.29497e+06 s");
  MethodRules both = records;
  both.WTPNumLoops(0, 4294967295);
  EXPECT_THAT(RefusalOf(both), HasSubstr("and times have room for 4.29497e+06 s"));
  records.WTPTimeout(0, 1000);
  EXPECT_EQ(RefusalOf(records), "") << "as many as fit in a second";
}

TEST(MethodProgram, TheNumberOfPointsIsBounded) {
  TslBL::Tune tune = ShortTune(5, 3000);
  tune.ControlData.PulseCountDelay = 25;
  MethodRules wide = OneSpectrum(tune);
  wide.WTPNumLoops(0, 400000);
  EXPECT_THAT(RefusalOf(wide), HasSubstr("of 1.2e+10 points in all; at most 1e+06 spectra and 1e+10 points"));
}

// Any method is gone through spectrum by spectrum, as slowly as it reads.
std::vector<std::uint32_t> PlainTimes(const MethodRules& rules) {
  std::vector<std::uint32_t> times;
  std::uint64_t begin = 0;
  for (std::uint32_t tp = 0; tp < rules.QNumTimePeriods(); ++tp) {
    const bool isFree = rules.QTPTimeout(tp) == MethodRules::FreeRun;
    const std::uint64_t end = begin + rules.QTPTimeout(tp) * std::uint64_t{1000};
    std::uint64_t at = begin + rules.QTPSettleDelay(tp);
    bool isOver = false;
    for (std::uint32_t loop = 0; isFree ? loop < rules.QTPNumLoops(tp) : !isOver; ++loop)
      for (std::uint32_t si = 0; si < rules.QNumSeqItems(tp) && !isOver; ++si) {
        at += rules.QTRSettleDelay(tp, si, 0);
        const auto took = static_cast<std::uint64_t>(rules.QSITuneDuration(tp, si) * 1e6 + 0.5);
        const std::uint32_t records = rules.TuneRuns.at(rules.TimePeriods[tp].Sequence[si][0]).Records;
        for (std::uint32_t record = 0; record < records && !isOver; ++record, at += took) {
          isOver = !isFree && at + took > end;
          if (!isOver) times.push_back(static_cast<std::uint32_t>((at + 500) / 1000));
        }
      }
    begin = isFree ? at : end;
  }
  return times;
}

TEST(MethodProgram, AnyMethodTakesTheSpectraOfAPlainWalk) {
  const std::uint64_t seed = 20261123;
  SCOPED_TRACE(seed);
  std::mt19937_64 random(seed);
  const auto below = [&](std::uint32_t n) { return static_cast<std::uint32_t>(random() % n); };
  for (int i = 0; i < 60; ++i) {
    MethodRules rules = OneSpectrum();
    while (rules.QNumTimePeriods() <= below(4)) rules.InsertTimePeriod();
    for (std::uint32_t tp = 0; tp < rules.QNumTimePeriods(); ++tp) {
      while (rules.QNumSeqItems(tp) <= below(4)) rules.InsertSeqItem(tp);
      for (std::uint32_t si = 0; si < rules.QNumSeqItems(tp); ++si) {
        const double low = 100 + below(500);
        rules.WTRTune(tp, si, 0, ShortTune(low, low + 5 + below(30), TslCommon::PolarityTypes(below(2))));
        rules.WTRNumRecs(tp, si, 0, 1 + below(4));
      }
      if (below(2) == 0) {
        rules.WTPTimeout(tp, 1 + below(9000));
      } else {
        rules.WTPTimeout(tp, MethodRules::FreeRun);
        rules.WTPNumLoops(tp, 1 + below(5));
      }
    }
    const auto plain = PlainTimes(rules);
    EXPECT_EQ(TimesOf(rules), plain) << i;
    EXPECT_EQ(MethodProgram(rules).Count(), plain.size()) << i;
  }
}

}  // namespace
}  // namespace tests
