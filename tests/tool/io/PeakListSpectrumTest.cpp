#include <tool/io/PeakListSpectrum.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include <tslbl/spectrum/PeakTable.h>

namespace tests {
namespace {

using testing::ElementsAre;

std::unique_ptr<TslBL::Spectrum> SpectrumOf(const std::vector<double>& mz,
                                            const std::vector<double>& intensity) {
  return TslTool::PeakListSpectrum(mz, intensity);
}

TEST(PeakListSpectrum, HasThePlacesAndIntensitiesOfTheList) {
  const auto spectrum = SpectrumOf({500.25, 501.5, 700.0}, {30.0, 10.0, 60.0});
  const std::vector<TslBL::MZPeak> table = TslBL::CreateMZPeakTable(*spectrum);
  ASSERT_EQ(table.size(), 3U);
  EXPECT_EQ(table[0].Mass, 500.25);
  EXPECT_EQ(table[0].Ampl, 30.0);
  EXPECT_EQ(table[0].Area, 30.0);
  EXPECT_EQ(table[0].MaxX, 500.25);
  EXPECT_EQ(table[2].Mass, 700.0);
  EXPECT_EQ(table[2].RelCentroidAmpl, 100.0);
  EXPECT_TRUE(spectrum->CheckAllStatus(TslBL::Curve::STATUS_PEAKS));
}

TEST(PeakListSpectrum, TakesTheWeakestForJustSeen) {
  const auto spectrum = SpectrumOf({500.25, 501.5, 700.0}, {30.0, 10.0, 60.0});
  EXPECT_NEAR(TslBL::TranslateMZPeak(*spectrum, 1).Signal2Noise, 3.0, 1e-12);
  EXPECT_NEAR(TslBL::TranslateMZPeak(*spectrum, 2).Signal2Noise, 18.0, 1e-12);
}

TEST(PeakListSpectrum, DrawsTrianglesThatStandApart) {
  const auto spectrum = SpectrumOf({500.0, 500.1, 500.6}, {1.0, 2.0, 3.0});
  // Half a triangle is 0.4 of the room that the nearest leave.
  EXPECT_THAT(spectrum->xAxis,
              ElementsAre(testing::DoubleNear(499.96, 1e-9), 500.0, testing::DoubleNear(500.04, 1e-9),
                          testing::DoubleNear(500.06, 1e-9), 500.1, testing::DoubleNear(500.14, 1e-9),
                          testing::DoubleNear(500.56, 1e-9), 500.6, testing::DoubleNear(500.64, 1e-9)));
  EXPECT_THAT(spectrum->yAxis, ElementsAre(0, 1, 0, 0, 2, 0, 0, 3, 0));
}

TEST(PeakListSpectrum, LetsNeighboursThatAreNearShareAPoint) {
  std::vector<double> mz;
  for (int i = 0; i < 40; ++i) mz.push_back(500.0 + i);
  mz.push_back(mz.back() + 1e-3);
  const auto spectrum = SpectrumOf(mz, std::vector<double>(mz.size(), 1.0));
  EXPECT_TRUE(std::ranges::is_sorted(spectrum->xAxis, std::less_equal()));
  EXPECT_EQ(spectrum->xAxis.size(), 3 * mz.size() - 1);
  EXPECT_EQ(spectrum->peaks.back().startIdx, spectrum->peaks[39].endIdx);
}

TEST(PeakListSpectrum, AddsUpPeaksOfOnePlaceAndLeavesOutWhatIsNone) {
  const auto spectrum = SpectrumOf({-1.0, 0.0, 500.0, 500.0, 501.0, 502.0}, {5, 5, 1, 2, 0, -4});
  ASSERT_EQ(spectrum->QNumPeaks(), 1U);
  EXPECT_EQ(TslBL::TranslateMZPeak(*spectrum, 0).Ampl, 3.0);
}

TEST(PeakListSpectrum, MayBeEmpty) {
  const auto spectrum = SpectrumOf({}, {});
  EXPECT_EQ(spectrum->QNumPeaks(), 0U);
  EXPECT_TRUE(spectrum->xAxis.empty());
}

}  // namespace
}  // namespace tests
