#include <tslbl/overlap/FitGroup.h>

#include <gtest/gtest.h>

#include <overlap/FakeEngine.h>
#include <overlap/OverlapSpectrum.h>
#include <limits>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

constexpr const char* kOutside =
    "Current settings create an overlap peak outside the group range.  Try peaks closer to the group.";

// Of the two joined data peaks, with different widths and baselines.
std::vector<OPDEstimate> TwoEstimates() {
  return {{7, 0, 10, 15, 20, 11.0, 100.0, 4.0}, {7, 1, 20, 26, 30, 12.0, 90.0, 6.0}};
}

std::string Fit(Spectrum& spectrum, const std::vector<OPDEstimate>& estimates) {
  return Thrown<std::exception>(
      [&] { FitGroup(spectrum, estimates, OPDParams::HookeJeeves, MakeOverlapPeakEngine().get()); });
}

}  // namespace

TEST(FitGroup, StartsFromTheFirstEstimate) {
  FakeEngine engine;
  Spectrum s = TwoJoinedAndOne();
  EXPECT_EQ(Fit(s, TwoEstimates()), "");
  const FitCall& call = engine.fits.at(0);
  EXPECT_TRUE(call.hookeJeeves);
  EXPECT_EQ(call.y, std::vector<double>(s.yAxis.begin() + 10, s.yAxis.begin() + 31));
  EXPECT_EQ(call.apexes, (Indexes{5, 16}));
  EXPECT_EQ(call.baseline, 11.0);
  EXPECT_NEAR(call.a3, 4.0 / 2.3548200450309493, 1e-12);
}

TEST(FitGroup, AddsWhatIsFittedAsAGroup) {
  const FakeEngine engine;
  Spectrum s = TwoJoinedAndOne();
  Fit(s, TwoEstimates());
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@15 1:1@26");
  EXPECT_EQ(RowGroups(s), "1 1 0");
  const OverlapPeakInfo& peak = s.overlapPeaks.at(1);
  EXPECT_EQ(peak.Height, 50.0);
  EXPECT_EQ(peak.Baseline, 5.0);
  EXPECT_NEAR(peak.FWHM, 2.0, 1e-12);
  EXPECT_EQ(peak.Fit4, 8.0);
  EXPECT_EQ(peak.Fit5, 10.0);
  EXPECT_EQ(peak.Fit6, 12.0);
}

TEST(FitGroup, KeepsFractionsOfPositions) {
  FakeEngine engine;
  engine.fit = [](const FitCall&, auto& results) {
    results = {{50, 5.25, 1, 0, 0, 0, 0}, {50, 0.0, 1, 0, 0, 0, 0}};
    return OverlapPeakEngine::kOk;
  };
  Spectrum s = TwoJoinedAndOne();
  Fit(s, TwoEstimates());
  EXPECT_EQ(Text(s.overlapPeaks), "1:1@10 1:0@15.25");
}

TEST(FitGroup, RefusesPeaksOutsideTheGroup) {
  FakeEngine engine;
  double centre = 0;
  engine.fit = [&](const FitCall&, auto& results) {
    results = {{50, 5.0, 1, 0, 0, 0, 0}, {50, centre, 1, 0, 0, 0, 0}};
    return OverlapPeakEngine::kOk;
  };
  Spectrum s = TwoJoinedAndOne();
  for (const double outside : {-1e-9, 21.0, 1e300, -1e300, std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity()}) {
    centre = outside;
    EXPECT_EQ(Fit(s, TwoEstimates()), kOutside) << outside;
  }
  EXPECT_EQ(Text(s.overlapPeaks), "");
  centre = 20.999;
  EXPECT_EQ(Fit(s, TwoEstimates()), "");
}

TEST(FitGroup, RefusesRangesThatTheSpectrumHasNot) {
  const FakeEngine engine;
  Spectrum s = TwoJoinedAndOne();
  std::vector<OPDEstimate> estimates = TwoEstimates();
  estimates[1].EndIdx = 9;
  EXPECT_EQ(Fit(s, estimates), "Invalid group range.");
  estimates[1].EndIdx = 200;
  EXPECT_EQ(Fit(s, estimates), "Invalid spectrum range.");
}
