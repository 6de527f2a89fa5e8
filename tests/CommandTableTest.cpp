#include <gtest/gtest.h>

#include <chargestate/FakeEngines.h>
#include <curve/TestCurve.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <tslbl/chromatogram/ICObj.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Execute.h>
#include <map>
#include <set>

using namespace TslBL;
using namespace tests;

namespace {

// A curve on which every step may run, with the engines that some need.
DeconSpectrum Prepared() {
  DeconSpectrum curve;
  curve.yAxis = Values("1 2 5 9 5 2 1 1 0 1 3 8 3 1");
  curve.xAxis = Count(curve.yAxis.size());
  curve.AddStatus(Curve::STATUS_Y);
  curve.AddStatus(Curve::STATUS_X);
  curve.thresholdParams.Value = 2.0;
  EXPECT_TRUE(RunOn(ExecuteThreshold, curve).ok);
  EXPECT_TRUE(RunOn(ExecutePeakDetect, curve).ok);
  return curve;
}

std::wstring Message(MessageId id) { return TslLoadString(ModuleHandle(), id); }

}  // namespace

TEST(CommandTable, RanksWhatACompactChainHoldsOnceInItsOrder) {
  std::map<int, EvalType> byRank;
  for (const CommandRow& row : CommandTable())
    if (row.rank != 0) byRank.emplace(row.rank, row.type);
  EXPECT_EQ(byRank, (std::map<int, EvalType>{{1, EvalType::Baseline},
                                             {2, EvalType::Noise},
                                             {3, EvalType::Threshold},
                                             {4, EvalType::PeakDetect},
                                             {5, EvalType::OPD},
                                             {6, EvalType::CSDecon}}));
}

TEST(CommandTable, HoldsNoNumberTextOrRankTwice) {
  std::set<EvalType> types;
  std::set<std::wstring> texts;
  std::set<int> ranks;
  for (const CommandRow& row : CommandTable()) {
    EXPECT_TRUE(types.insert(row.type).second) << Number(row.type);
    EXPECT_TRUE(texts.insert(row.text).second) << Number(row.type);
    EXPECT_TRUE(row.rank == 0 || ranks.insert(row.rank).second) << Number(row.type);
  }
}

TEST(CommandTable, MakesACommandOfTheRow) {
  for (const CommandRow& row : CommandTable()) {
    EXPECT_EQ(row.make().Type(), row.type) << Number(row.type);
    EXPECT_EQ(row.make().TypeText(), row.text) << Number(row.type);
  }
}

TEST(CommandTable, SubtractsOnlyWhatCompactionKeepsForIt) {
  for (const CommandRow& row : CommandTable()) {
    if (row.subtracts == EvalType::Empty) continue;
    ASSERT_NE(FindCommand(row.subtracts), nullptr);
    EXPECT_NE(FindCommand(row.subtracts)->rank, 0);
  }
}

TEST(CommandTable, HoldsTheStepThatTheCommandRuns) {
  FakeEngines engines;
  const std::wstring found = AnswerXml(SeriesXml(1000, StateXml(2, 0, {0, 1})));
  engines.answers["Resolved.AutoSeries"] = engines.answers["Unresolved.AutoSeries"] = found;
  for (const CommandRow& row : CommandTable()) {
    DeconSpectrum byStep = Prepared();
    const CurveEval command = row.make();
    DeconSpectrum byCommand = byStep;
    EXPECT_TRUE(RunOn(command, byCommand).ok) << Number(row.type);
    // Its parameters are in the curve by now, and the step finds them there.
    DeconSpectrum again = byCommand;
    EXPECT_EQ(RunOn(command, byCommand), RunOn(row.step, again)) << Number(row.type);
    EXPECT_EQ(byCommand, again) << Number(row.type);
    const bool recorded = row.type != EvalType::Empty;
    EXPECT_EQ(again.evals.size(), byStep.evals.size() + (recorded ? 2 : 0)) << Number(row.type);
  }
}

TEST(CommandTable, HoldsCommandsOfSpectraThatAChromatogramFailsWithoutAMessage) {
  ICObj chromatogram;
  for (const EvalType type : {EvalType::OPD, EvalType::CSDecon}) {
    EXPECT_EQ(RunOn(FindCommand(type)->make(), chromatogram), Failure(L""));
    EXPECT_EQ(RunOn(FindCommand(type)->step, chromatogram), Failure(L""));
  }
}

TEST(CommandTable, HoldsTheMessageOfTheFailure) {
  for (const CommandRow& row : CommandTable()) {
    if (row.failure == kNoMessage) continue;
    DeconSpectrum frozen = Prepared();
    frozen.AddStatus(Curve::STATUS_FROZEN);
    EXPECT_EQ(RunOn(row.step, frozen), Failure(Message(row.failure)));
  }
}

TEST(CommandTable, IsSearchedByTypeAndByTextWithCase) {
  for (const CommandRow& row : CommandTable()) {
    EXPECT_EQ(FindCommand(row.type), &row);
    EXPECT_EQ(FindCommand(std::wstring(row.text)), &row);
  }
  EXPECT_EQ(FindCommand(static_cast<EvalType>(11)), nullptr);
}

TEST(CommandTable, TakesATextOfNoCommandForChargeStateDeconvolution) {
  for (const wchar_t* text : {L"smooth", L"Smooth ", L"", L"opd", L"charge state deconvolution"})
    EXPECT_EQ(FindCommand(std::wstring(text)), FindCommand(EvalType::CSDecon));
}

TEST(FusionTable, JoinsTwoCommandsThatGiveTheSameOneByOne) {
  ASSERT_FALSE(FusionTable().empty());
  for (const FusionRow& row : FusionTable()) {
    DeconSpectrum fused = Prepared();
    DeconSpectrum single = fused;
    EXPECT_TRUE(RunOn([&](Curve& c, Changed& changed,
                          std::wstring& error) { return row.run(c, nullptr, changed, error); },
                      fused)
                    .ok);
    EXPECT_TRUE(RunOn(FindCommand(row.first)->step, single).ok);
    EXPECT_TRUE(RunOn(FindCommand(row.second)->step, single).ok);
    EXPECT_EQ(fused, single);
  }
}
