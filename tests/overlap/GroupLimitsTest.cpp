#include <tslbl/overlap/GroupLimits.h>

#include <gtest/gtest.h>

#include <overlap/OverlapSpectrum.h>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

std::string Limits(const Spectrum& spectrum, const std::string& fits) {
  const MZLimits limits = LimitsOfPeaks(spectrum, Fits(fits));
  std::ostringstream out;
  out << limits.low << " to " << limits.high;
  return out.str();
}

}  // namespace

TEST(LimitsOfPeaks, ReachOverTheOutermostDataPeaks) {
  const Spectrum s = TwoJoinedAndOne();
  EXPECT_EQ(Limits(s, ""), "0 to 0");
  EXPECT_EQ(Limits(s, "1:1@25"), "101 to 101.5");
  EXPECT_EQ(Limits(s, "1:2@12 1:0@65"), "100.5 to 103.5");
}

TEST(LimitsOfPeaks, RefuseOverlapPeaksWithoutADataPeak) {
  Spectrum s = TwoJoinedAndOne();
  const auto failure = [&] { return Thrown<std::logic_error>([&] { Limits(s, "1:0@15 1:3@25"); }); };
  EXPECT_EQ(failure(), "Invalid group range.");
  s.peaks.emplace_back().endIdx = 200;
  EXPECT_EQ(failure(), "Invalid group range.");
}

TEST(HalfWidthOfPeaks, IsHalfOfAPeaksShare) {
  const Spectrum s = TwoJoinedAndOne();
  EXPECT_EQ(HalfWidthOfPeaks(s, {100.5, 101.5}, 2), 21.0 / 2 * 0.5);
  EXPECT_EQ(HalfWidthOfPeaks(s, {100.52, 101.48}, 3), 21.0 / 3 * 0.5);
  EXPECT_EQ(HalfWidthOfPeaks(s, {101.0, 101.0}, 1), 0.5);
}

TEST(HalfWidthOfPeaks, RefusesLimitsInTheWrongOrder) {
  const Spectrum s = TwoJoinedAndOne();
  EXPECT_EQ(Thrown<std::logic_error>([&] {
              HalfWidthOfPeaks(s, {101.5, 100.5}, 2);
            }),
            "Invalid group range.");
}

TEST(EstimatesOfPeaks, StandOnTheirDataPeaks) {
  Spectrum s = TwoJoinedAndOne();
  s.baseline[26] = 11.0;
  s.yAxis[26] = 70.0;
  const std::vector<OPDEstimate> estimates = EstimatesOfPeaks(s, Fits("1:0@15.9 1:1@26.5"), 4, 3.5);
  EXPECT_EQ(Text(estimates), "4:0@15 4:1@26");
  EXPECT_EQ(estimates[1].StartIdx, 20U);
  EXPECT_EQ(estimates[1].EndIdx, 30U);
  EXPECT_EQ(estimates[1].Baseline, 11.0);
  EXPECT_EQ(estimates[1].Ampl, 70.0);
  EXPECT_EQ(estimates[1].HalfWidth, 3.5);
}

TEST(EstimatesOfPeaks, RefusesOverlapPeaksWithoutADataPeak) {
  const Spectrum s = TwoJoinedAndOne();
  EXPECT_EQ(Thrown<std::logic_error>([&] { EstimatesOfPeaks(s, Fits("1:3@15"), 1, 1); }),
            "Invalid group range.");
}
