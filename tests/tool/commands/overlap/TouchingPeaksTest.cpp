#include <tool/commands/overlap/TouchingPeaks.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>

namespace tests {
namespace {

// Isotopes of one ion, the last of which the engine leaves out.
const std::vector<KnownPeak> kIsotopes = {{500.0, 5000.0}, {501.0, 1400.0}, {502.0, 190.0}, {503.0, 18.0}};

std::vector<std::uint32_t> GroupsOf(const TslTool::LoadedSpectrum& loaded) {
  std::vector<std::uint32_t> groups;
  for (const TslBL::PeakInfo& peak : loaded.spectrum->peaks) groups.push_back(peak.overlapGroup);
  return groups;
}

// The group without what stands at an m/z.
TslTool::LoadedSpectrum Without(double mz) {
  return Deconvolved(WithPeaks(CountedSpectrum(kIsotopes)), {{TslTool::GroupEdit::Remove, mz}});
}

TEST(TouchingPeaks, BelongToTheGroupThatTheyRunInto) {
  const TslTool::LoadedSpectrum loaded = Deconvolved(WithPeaks(CountedSpectrum(kIsotopes)));
  EXPECT_THAT(GroupsOf(loaded), testing::Each(1));
  ASSERT_EQ(loaded.spectrum->overlapPeaks.size(), 4U);
  const TslBL::OverlapPeakInfo& last = loaded.spectrum->overlapPeaks.back();
  EXPECT_NEAR(loaded.spectrum->FractionalIndexToXAxisVal(last.Position), 503.0, 0.15);
  EXPECT_NEAR(last.Height, 18.0, 6.0);
}

TEST(TouchingPeaks, AreAddedFromBothSides) {
  for (const double mz : {500.0, 503.0}) {
    const TslTool::LoadedSpectrum loaded = Without(mz);
    ASSERT_EQ(loaded.spectrum->overlapPeaks.size(), 3U);
    TslTool::FitTouchingPeaks(*loaded.spectrum);
    EXPECT_EQ(loaded.spectrum->overlapPeaks.size(), 4U) << mz;
  }
}

// The engine takes a peak fifty times as low for the tail of the other, and one alone makes no group.
TEST(TouchingPeaks, MakeAGroupOfTheirOwn) {
  const TslTool::LoadedSpectrum loaded =
      Deconvolved(WithPeaks(CountedSpectrum({{500.0, 100000.0}, {501.02, 2000.0}})));
  ASSERT_EQ(loaded.spectrum->overlapPeaks.size(), 2U);
  EXPECT_EQ(loaded.spectrum->QNumGroups(), 1U);
  EXPECT_NEAR(loaded.spectrum->overlapPeaks[1].Height, 2000.0, 200.0);
}

// The rows of the isotopes that are fitted with other parameters.
std::size_t FittedWith(void (*change)(TslBL::OPDParams&)) {
  const TslTool::LoadedSpectrum loaded = Without(503.0);
  change(loaded.spectrum->opdParams);
  TslTool::FitTouchingPeaks(*loaded.spectrum);
  return loaded.spectrum->overlapPeaks.size();
}

TEST(TouchingPeaks, HoldToTheRangesTheLeastAmplitudeAndTheMostPeaks) {
  EXPECT_EQ(FittedWith([](TslBL::OPDParams& params) { params.MinPeakAmplitude = 0; }), 4U);
  EXPECT_EQ(FittedWith([](TslBL::OPDParams& params) { params.MaxPeaks = 3; }), 3U);
  EXPECT_EQ(FittedWith([](TslBL::OPDParams& params) { params.MinPeakAmplitude = 100; }), 3U);
  EXPECT_EQ(FittedWith([](TslBL::OPDParams& params) {
              params.FullRange = false;
              params.Ranges = {{true, 499.0, 501.5}};
            }),
            3U);
  EXPECT_EQ(FittedWith([](TslBL::OPDParams& params) {
              params.FullRange = false;
              params.Ranges = {{true, 502.9, 503.5}};
            }),
            4U);
}

TEST(TouchingPeaks, AreNoneWherePeaksStandApart) {
  const TslTool::LoadedSpectrum loaded = Deconvolved();
  EXPECT_THAT(GroupsOf(loaded), testing::ElementsAre(1, 0));
}

TEST(TouchingPeaks, StayAloneWhereTheyMeetLow) {
  const TslTool::LoadedSpectrum loaded = Without(503.0);
  loaded.spectrum->opdParams.MinAmplPercentCmnEndPt = 100;
  TslTool::FitTouchingPeaks(*loaded.spectrum);
  EXPECT_EQ(loaded.spectrum->overlapPeaks.size(), 3U);
}

}  // namespace
}  // namespace tests
