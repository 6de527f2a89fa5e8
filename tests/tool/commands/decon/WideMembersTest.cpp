#include <tool/commands/decon/WideMembers.h>

#include <gtest/gtest.h>

#include <algorithm>

#include <tool/commands/decon/Proteins.h>
#include <tool/commands/decon/SeriesRows.h>

namespace tests {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::DeconSpectrum;

// The first unresolved series of a spectrum whose third peak is so many times as wide as it was.
struct Widened {
  explicit Widened(double times) : spectrum(TslTool::DeconvolvedOf(loaded)) {
    before = spectrum.Series.front();
    peak = before.Peaks[2].PeakId;
    TslBL::PeakInfo& wide = spectrum.peaks[peak];
    const double half = 0.5 * times * (wide.halfHeightRightIdx - wide.halfHeightLeftIdx);
    wide.halfHeightLeftIdx = wide.apexIdx - half;
    wide.halfHeightRightIdx = wide.apexIdx + half;
    TslTool::DropWideMembers(spectrum);
    after = spectrum.Series.front();
  }
  bool HasPeak() const {
    return std::ranges::find(after.Peaks, peak, &TslBL::CSSeriesPeakInfo::PeakId) != after.Peaks.end();
  }

  TslTool::LoadedSpectrum loaded = WithSeries();
  DeconSpectrum spectrum;
  CSSeriesInfo before;
  CSSeriesInfo after;
  std::uint32_t peak = 0;
};

TEST(WideMembers, AreTakenOut) {
  const Widened hump(6.0);
  EXPECT_FALSE(hump.HasPeak());
  EXPECT_EQ(hump.after.Peaks.size(), hump.before.Peaks.size() - 1);
  EXPECT_NEAR(hump.after.AvgMass, hump.before.AvgMass, 0.1);
}

TEST(WideMembers, AreMoreThanFourTimesAsWideAsTheOthers) {
  const Widened merged(3.0);
  EXPECT_TRUE(merged.HasPeak());
  EXPECT_EQ(merged.after.AvgMass, merged.before.AvgMass);
}

TEST(WideMembers, AreNoneWhereWidthsAreNotKnown) {
  const TslTool::LoadedSpectrum loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  const std::size_t before = spectrum.Series.front().Peaks.size();
  for (std::size_t i = 1; i < spectrum.peaks.size(); ++i)
    spectrum.peaks[i].halfHeightLeftIdx = spectrum.peaks[i].halfHeightRightIdx = spectrum.peaks[i].apexIdx;
  TslTool::DropWideMembers(spectrum);
  EXPECT_EQ(spectrum.Series.front().Peaks.size(), before);
}

}  // namespace
}  // namespace tests
