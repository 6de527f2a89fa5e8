#include <tslbl/overlap/Candidates.h>

#include <gtest/gtest.h>

#include <overlap/OverlapSpectrum.h>
#include <tslbl/spectrum/PeakTable.h>
#include <limits>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

std::vector<OPDCandidate> Filtered(const Spectrum& spectrum) {
  std::vector<OPDCandidate> candidates = BuildCandidates(spectrum);
  FilterCandidates(spectrum, candidates);
  return candidates;
}

bool FirstTwoJoined(const Spectrum& spectrum) {
  const std::vector<OPDCandidate> candidates = BuildCandidates(spectrum);
  return AreJoined(spectrum, candidates.at(0), candidates.at(1));
}

// Two peaks whose common end stands at an amplitude, of peaks of height 90 above the baseline of 10.
bool JoinedAtEnd(double endAmpl, std::uint32_t minPercent) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20, 2, endAmpl}, {20, 25, 30, 2}});
  s.opdParams.MinAmplPercentCmnEndPt = minPercent;
  return FirstTwoJoined(s);
}

}  // namespace

TEST(MakeCandidate, TellsWhatIsKnownOfADataPeak) {
  const Spectrum s = SpectrumOfPeaks({{10, 15.75, 20, 2, 80, 100, 0.5}});
  const OPDCandidate c = MakeCandidate(s, 0, TranslateMZPeak(s, 0));
  EXPECT_EQ(c.GroupId, 0U);
  EXPECT_EQ(c.DataPeakId, 0U);
  EXPECT_EQ(c.StartIdx, 10U);
  EXPECT_EQ(c.ApexIdx, 15U);
  EXPECT_EQ(c.EndIdx, 20U);
  EXPECT_EQ(c.Baseline, 10.0);
  EXPECT_EQ(c.Ampl, 100.0);
  EXPECT_EQ(c.HalfWidth, 5.5);
  EXPECT_NEAR(c.Resolution, 100.7875 / 0.1, 1e-6);
  EXPECT_NEAR(c.CentroidX, 100.7875, 1e-9);
  EXPECT_NEAR(c.MaxX, 100.8125, 1e-9);
  EXPECT_EQ(c.EndAmpl, 80.0);
  EXPECT_EQ(c.EndBaseline, 10.0);
  EXPECT_FALSE(c.NeedsFit);
}

TEST(MakeCandidate, RefusesTheTranslationOfAnotherRow) {
  const Spectrum s = TwoJoinedAndOne();
  EXPECT_EQ(Thrown<std::logic_error>([&] { MakeCandidate(s, 0, TranslateMZPeak(s, 1)); }), "Bad peak index.");
}

TEST(BuildCandidates, TakesEveryDataPeakOfTheFullRange) {
  EXPECT_EQ(Text(BuildCandidates(TwoJoinedAndOne())), "0:0@15 0:1@25 0:2@65");
  EXPECT_TRUE(BuildCandidates(SpectrumOfPeaks({})).empty());
}

TEST(BuildCandidates, AscendsByApexWhateverTheOrderOfTheTable) {
  EXPECT_EQ(Text(BuildCandidates(SpectrumOfPeaks({{60, 65, 70}, {10, 15, 20}}))), "0:1@15 0:0@65");
}

TEST(BuildCandidates, TakesPeaksThatMeetAnEnabledRange) {
  Spectrum s = TwoJoinedAndOne();  // 100.5 to 101, 101 to 101.5, 103 to 103.5
  s.opdParams.FullRange = false;
  const auto of = [&](const std::vector<OPDRange>& ranges) {
    s.opdParams.Ranges = ranges;
    return Text(BuildCandidates(s));
  };
  EXPECT_EQ(of({}), "");
  EXPECT_EQ(of({{true, 5.0, 3000.0}}), "0:0@15 0:1@25 0:2@65");
  EXPECT_EQ(of({{false, 5.0, 3000.0}}), "");
  EXPECT_EQ(of({{true, 101.2, 103.0}}), "0:1@25 0:2@65");
  EXPECT_EQ(of({{true, 101.6, 102.9}}), "");
  EXPECT_EQ(of({{true, 5.0, 100.6}, {true, 103.4, 103.6}}), "0:0@15 0:2@65");
  EXPECT_EQ(of({{true, s.xAxis[20], s.xAxis[20]}}), "0:0@15 0:1@25");
}

TEST(AreJoined, NeedsPeaksAtMostAQuarterOfAnMzApart) {
  EXPECT_TRUE(FirstTwoJoined(SpectrumOfPeaks({{10, 15, 20}, {24, 27, 30}})));
  EXPECT_FALSE(FirstTwoJoined(SpectrumOfPeaks({{10, 15, 20}, {26, 28, 30}})));
}

TEST(AreJoined, JoinsPeaksAQuarterOfAnMzApartToTheBit) {
  const Spectrum s = SpectrumOfPeaks({{10, 15, 20}, {25, 28, 30}});
  ASSERT_EQ(s.xAxis[20] + 0.25, s.xAxis[25]);
  EXPECT_TRUE(FirstTwoJoined(s));
}

TEST(AreJoined, NeedsACommonEndOfTheAskedPercentage) {
  EXPECT_TRUE(JoinedAtEnd(55.0, 50));
  EXPECT_FALSE(JoinedAtEnd(54.99, 50));
  EXPECT_TRUE(JoinedAtEnd(54.99, 49));
}

TEST(AreJoined, MeasuresTheEndByTheLowerPeak) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20, 2, 35, 100}, {20, 25, 30, 2, 10, 60}});
  EXPECT_TRUE(FirstTwoJoined(s));  // 25 of 50
  s.peaks[1].centroidAmpl = 100.0;
  EXPECT_FALSE(FirstTwoJoined(s));  // 25 of 90
}

TEST(AreJoined, MeasuresTheLowerPeakFromTheHigherBaseline) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20, 2, 40}, {20, 25, 30}});
  EXPECT_FALSE(FirstTwoJoined(s));  // 30 of 90
  s.peaks[1].baselineAmpl = 45.0;
  EXPECT_TRUE(FirstTwoJoined(s));  // 30 of 55
}

TEST(AreJoined, AnEndBelowTheBaselineJoins) {
  EXPECT_TRUE(JoinedAtEnd(9.0, 50));            // -1 %
  EXPECT_TRUE(JoinedAtEnd(9.0, 4294967295U));   // the largest unsigned number
  EXPECT_FALSE(JoinedAtEnd(9.5, 50));           // -0.6 % is 0 %
  EXPECT_FALSE(JoinedAtEnd(0.0, 4294967295U));  // -11 % is less than that number
}

TEST(AreJoined, RefusesPeaksWithoutHeight) {
  Spectrum s = TwoJoinedAndOne();
  const auto failure = [&] { return Thrown<std::logic_error>([&] { FirstTwoJoined(s); }); };
  s.peaks[0].baselineAmpl = 100.0;
  EXPECT_EQ(failure(), "Amplitude less than baseline.");
  s.peaks[0].baselineAmpl = std::numeric_limits<double>::quiet_NaN();
  s.peaks[1].baselineAmpl = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(failure(), "Amplitude less than baseline.");
}

TEST(AreJoined, PeaksWithoutHeightThatStandApartAreNot) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}, {60, 65, 70}});
  s.peaks[0].baselineAmpl = 100.0;
  EXPECT_FALSE(FirstTwoJoined(s));
}

TEST(FilterCandidates, LeavesOutCleanPeaksThatStandAlone) {
  EXPECT_EQ(Text(Filtered(SpectrumOfPeaks({{10, 15, 20, 1}, {60, 65, 70, 1}}))), "");
}

TEST(FilterCandidates, MarksPeaksOfLowResolution) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20, 2}});
  EXPECT_EQ(Text(Filtered(s)), "0:0@15*");
  s.opdParams.ResolutionThreshold = 1007;  // it resolves 1007.5
  EXPECT_EQ(Text(Filtered(s)), "");
}

TEST(FilterCandidates, MarksPeaksWhoseMaximumLiesFarFromTheCentroid) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20, 1, 80, 100, 5}});  // 0.25 m/z
  EXPECT_EQ(Text(Filtered(s)), "0:0@15*");
  s.opdParams.MinDeltaCentroidPkMax = 0.26;
  EXPECT_EQ(Text(Filtered(s)), "");
  s.opdParams.MinDeltaCentroidPkMax = 0.0;  // nothing lies nearer than that
  s.peaks[0].maxIdx = s.peaks[0].centroidIdx;
  EXPECT_EQ(Text(Filtered(s)), "0:0@15*");
}

TEST(FilterCandidates, KeepsCleanPeaksThatAreJoinedToANeighbour) {
  EXPECT_EQ(Text(Filtered(SpectrumOfPeaks({{10, 15, 20, 1}, {20, 25, 30, 2}}))), "0:0@15 0:1@25*");
  EXPECT_EQ(Text(Filtered(SpectrumOfPeaks({{10, 15, 20, 2}, {20, 25, 30, 1}}))), "0:0@15* 0:1@25");
  EXPECT_EQ(Text(Filtered(SpectrumOfPeaks({{10, 15, 20, 1}, {20, 25, 30, 1}}))), "0:0@15 0:1@25");
}

TEST(FilterCandidates, AnErasedPeakIsNoNeighbour) {
  // The second is clean and joined to none; the third meets the first across it, which is out by then.
  Spectrum s = SpectrumOfPeaks({{10, 15, 24, 2, 80}, {25, 26, 26, 1, 10}, {27, 30, 34, 1, 10}});
  s.opdParams.MinAmplPercentCmnEndPt = 50;
  s.yAxis[24] = 10.0;
  EXPECT_EQ(Text(Filtered(s)), "0:0@15*");
  s.yAxis[24] = 80.0;
  EXPECT_EQ(Text(Filtered(s)), "0:0@15* 0:1@26");
}

TEST(FilterCandidates, TheNeighbourBeforeIsTheLastOneKept) {
  // The first reaches the third, not the second, which lies below the height of a common end.
  Spectrum s = SpectrumOfPeaks({{10, 15, 22, 2, 30, 100}, {22, 23, 23, 1, 10, 300}, {24, 28, 30, 1, 10, 40}});
  s.peaks[1].baselineAmpl = 10.0;
  EXPECT_EQ(Text(Filtered(s)), "0:0@15* 0:2@28");
}

TEST(NumberGroups, GivesJoinedNeighboursOneNumber) {
  Spectrum s =
      SpectrumOfPeaks({{10, 15, 20}, {20, 25, 30}, {60, 65, 70}, {70, 75, 80}, {80, 85, 90}, {99, 105, 110}});
  std::vector<OPDCandidate> candidates = Filtered(s);
  NumberGroups(s, candidates);
  EXPECT_EQ(Text(candidates), "1:0@15* 1:1@25* 2:2@65* 2:3@75* 2:4@85* 3:5@105*");
}
