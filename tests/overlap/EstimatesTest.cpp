#include <tslbl/overlap/Estimates.h>

#include <gtest/gtest.h>

#include <overlap/FakeEngine.h>
#include <overlap/OverlapSpectrum.h>
#include <tslbl/overlap/Candidates.h>
#include <limits>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

std::vector<OPDEstimate> EstimatesIn(const Spectrum& spectrum) {
  std::vector<OPDCandidate> candidates = BuildCandidates(spectrum);
  FilterCandidates(spectrum, candidates);
  NumberGroups(spectrum, candidates);
  return MakeEstimates(spectrum, candidates, MakeOverlapPeakEngine().get());
}

std::string Failure(const Spectrum& spectrum) {
  return Thrown<std::logic_error>([&] { EstimatesIn(spectrum); });
}

// The data peak on which a point lies, of peaks from 10 to 20, 24 to 30 and 40 to 50.
std::uint32_t PeakAt(std::uint32_t index) {
  const Spectrum s = SpectrumOfPeaks({{10, 15, 20}, {24, 27, 30}, {40, 45, 50}});
  return CandidateAt(BuildCandidates(s), index).DataPeakId;
}

}  // namespace

TEST(CandidateAt, IsTheOneThatSpansThePoint) {
  for (const std::uint32_t index : {10U, 15U, 20U}) EXPECT_EQ(PeakAt(index), 0U) << index;
  for (const std::uint32_t index : {24U, 30U}) EXPECT_EQ(PeakAt(index), 1U) << index;
}

TEST(CandidateAt, IsTheNearerOneInAGap) {
  EXPECT_EQ(PeakAt(21), 0U);
  EXPECT_EQ(PeakAt(22), 0U);  // as far from both
  EXPECT_EQ(PeakAt(23), 1U);
  EXPECT_EQ(PeakAt(35), 1U);
  EXPECT_EQ(PeakAt(36), 2U);
}

TEST(CandidateAt, IsTheFirstOrTheLastOneBeyondThem) {
  EXPECT_EQ(PeakAt(0), 0U);
  EXPECT_EQ(PeakAt(9), 0U);
  EXPECT_EQ(PeakAt(51), 2U);
  EXPECT_EQ(PeakAt(4294967295U), 2U);
}

TEST(CandidateAt, IsTheFirstOfPeaksThatShareAnEnd) {
  EXPECT_EQ(CandidateAt(BuildCandidates(TwoJoinedAndOne()), 20).DataPeakId, 0U);
}

TEST(MakeEstimates, OfCleanPeaksAreThePeaksThemselves) {
  FakeEngine engine;
  const Spectrum s = SpectrumOfPeaks({{10, 15, 20, 1}, {20, 25, 30, 1}});
  const std::vector<OPDEstimate> estimates = EstimatesIn(s);
  EXPECT_EQ(Text(estimates), "1:0@15 1:1@25");
  EXPECT_EQ(estimates[0].HalfWidth, 5.5);
  EXPECT_EQ(estimates[0].Ampl, 100.0);
  EXPECT_TRUE(engine.estimates.empty());
}

TEST(MakeEstimates, AskTheEngineForAGroupInWhichAPeakIsNotClean) {
  FakeEngine engine;
  engine.Propose({18, 3});
  Spectrum s = SpectrumOfPeaks({{10, 15, 20, 1}, {20, 25, 30, 2}});
  s.yAxis[13] = 70.0;
  s.yAxis[28] = 60.0;
  s.baseline[28] = 12.0;
  const std::vector<OPDEstimate> estimates = EstimatesIn(s);
  EXPECT_EQ(Text(estimates), "1:0@13 1:1@28");
  EXPECT_EQ(engine.estimates.at(0).y.size(), 21U);
  EXPECT_EQ(estimates[1].StartIdx, 20U);
  EXPECT_EQ(estimates[1].EndIdx, 30U);
  EXPECT_EQ(estimates[1].Baseline, 12.0);
  EXPECT_EQ(estimates[1].Ampl, 60.0);
  EXPECT_EQ(estimates[1].HalfWidth, 21.0 / 2 * 0.5);
}

TEST(MakeEstimates, ShareThePointsAmongMaxPeaksAtMost) {
  FakeEngine engine;
  engine.Propose({2, 5, 8, 15});
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}, {20, 25, 30}});
  s.opdParams.MaxPeaks = 3;
  for (const OPDEstimate& estimate : EstimatesIn(s)) EXPECT_EQ(estimate.HalfWidth, 21.0 / 3 * 0.5);
}

TEST(MakeEstimates, CountProposalsThatAreDroppedInTheShare) {
  FakeEngine engine;
  engine.Propose({5, 8, 15});
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}, {20, 25, 30}});
  s.yAxis[18] = 9.0;  // MinPeakAmplitude is 10
  const std::vector<OPDEstimate> estimates = EstimatesIn(s);
  EXPECT_EQ(Text(estimates), "1:0@15 1:1@25");
  EXPECT_EQ(estimates[0].HalfWidth, 21.0 / 3 * 0.5);
}

TEST(MakeEstimates, KeepProposalsOnTheLeastAmplitude) {
  FakeEngine engine;
  engine.Propose({1, 5});
  EXPECT_EQ(Text(EstimatesIn(TwoJoinedAndOne())).substr(0, 13), "1:0@11 1:0@15");
}

TEST(MakeEstimates, NeedTwoPeaksInAGroup) {
  FakeEngine engine;
  const auto of = [&](const Indexes& proposed) {
    engine.Propose(proposed);
    return EstimatesIn(SpectrumOfPeaks({{10, 15, 20}})).size();
  };
  EXPECT_EQ(of({}), 0U);
  EXPECT_EQ(of({5}), 0U);
  EXPECT_EQ(of({3, 7}), 2U);
}

TEST(MakeEstimates, OfWhichOneIsHighEnoughAreNone) {
  FakeEngine engine;
  engine.Propose({3, 7});
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}});
  s.yAxis[13] = 1.0;
  s.opdParams.MinPeakAmplitude = 2.0;
  EXPECT_TRUE(EstimatesIn(s).empty());
}

TEST(MakeEstimates, DropLowProposalsBeforeTheyAskWhetherTheyAreInTheGroup) {
  FakeEngine engine;
  engine.Propose({3, 7, -1});
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}});
  s.yAxis[9] = 1.0;
  s.opdParams.MinPeakAmplitude = 2.0;
  EXPECT_EQ(Text(EstimatesIn(s)), "1:0@13 1:0@17");
}

TEST(MakeEstimates, KeepTheTallestInOrderOfPosition) {
  FakeEngine engine;
  engine.Propose({1, 3, 5, 7, 9});
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}});
  const double amplitudes[] = {40, 90, 20, 60, 90};
  for (std::uint32_t i = 0; i < 5; ++i) s.yAxis[11 + 2 * i] = amplitudes[i];
  s.opdParams.MaxPeaks = 3;
  EXPECT_EQ(Text(EstimatesIn(s)), "1:0@13 1:0@17 1:0@19");
  s.opdParams.MaxPeaks = 5;
  EXPECT_EQ(EstimatesIn(s).size(), 5U);
  for (const std::uint32_t tooFew : {0U, 1U}) {
    s.opdParams.MaxPeaks = tooFew;
    EXPECT_TRUE(EstimatesIn(s).empty());
  }
}

TEST(MakeEstimates, KeepTheTallestOfCleanPeaksToo) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20, 1, 80, 90}, {20, 25, 30, 1, 80, 100}, {30, 35, 40, 1, 80, 95}});
  s.opdParams.MaxPeaks = 2;
  EXPECT_EQ(Text(EstimatesIn(s)), "1:1@25 1:2@35");
}

TEST(MakeEstimates, GoGroupByGroup) {
  FakeEngine engine;
  engine.Propose({3, 8});
  EXPECT_EQ(Text(EstimatesIn(TwoJoinedAndOne())), "1:0@13 1:0@18 2:2@63 2:2@68");
}

TEST(MakeEstimates, RefuseProposalsOutsideTheGroup) {
  FakeEngine engine;
  const Spectrum s = TwoJoinedAndOne();
  const auto failure = [&](const Indexes& proposed) {
    engine.Propose(proposed);
    return Failure(s);
  };
  EXPECT_EQ(failure({0, 10}), "");
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t outside : {-1, -11, 21, 500, kMost, -kMost})
    EXPECT_EQ(failure({5, outside}), "Initial estimate created peaks out of group range.") << outside;
}

TEST(MakeEstimates, RefuseDataPeaksThatTheSpectrumHasNot) {
  const FakeEngine engine;
  Spectrum s = TwoJoinedAndOne();
  s.peaks[2].endIdx = 200;
  EXPECT_EQ(Failure(s), "Invalid spectrum range.");
  s.peaks[2].endIdx = 59;
  EXPECT_EQ(Failure(s), "Invalid group range.");
}
