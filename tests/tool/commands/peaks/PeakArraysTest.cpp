#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include <tool/commands/peaks/Evaluated.h>
#include <tool/commands/peaks/PeakArrays.h>
#include <tool/mzml/WrittenSpectrum.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslTool::LoadedSpectrum;
using Peaks = std::vector<TslTool::ReportedPeak>;

Peaks PeaksAt(const std::vector<double>& mz) {
  Peaks peaks;
  for (const double at : mz) {
    peaks.emplace_back();
    peaks.back().row.Mass = at;
    peaks.back().row.Ampl = 10.0 * at;
  }
  return peaks;
}

Written WrittenPeaks(const LoadedSpectrum& loaded, const Peaks& peaks) {
  return {loaded, TslTool::PeakArrays(peaks, TslTool::Cv::kCounts)};
}

TEST(PeakArrays, HoldsWhatTheTableHoldsBitForBit) {
  const LoadedSpectrum loaded = EvaluatedScan(5);
  const Peaks peaks = TslTool::ReportedPeaks(loaded);
  const Written written = WrittenPeaks(loaded, peaks);
  const auto mz = written.Values("MS:1000514");
  const auto intensity = written.Values("MS:1000515");
  const auto ratio = written.Values("MS:1000517");
  const auto area = written.Values("MS:1000786", "area");
  const auto width = written.Values("MS:1000786", "width");
  const auto height = written.Values("MS:1000786", "height");
  ASSERT_GT(peaks.size(), 5U);
  for (std::size_t i = 0; i < peaks.size(); ++i) {
    EXPECT_EQ(mz.at(i), peaks[i].row.Mass);
    EXPECT_EQ(intensity.at(i), peaks[i].row.Ampl);
    EXPECT_EQ(ratio.at(i), peaks[i].row.Signal2Noise);
    EXPECT_EQ(area.at(i), peaks[i].area);
    EXPECT_EQ(width.at(i), peaks[i].Width());
    EXPECT_EQ(height.at(i), peaks[i].errors.height);
  }
}

TEST(PeakArrays, HoldsTheStandardErrorsWithNaNWhereTheyAreNotKnown) {
  Peaks peaks = PeaksAt({100, 200});
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  peaks[0].errors = {1, 2, 3, 4, true};
  peaks[1].errors = {kNaN, kNaN, kNaN, kNaN};
  const Written written = WrittenPeaks({}, peaks);
  double expected = 1;
  for (const char* name : {"height", "mz_se", "amplitude_se", "area_se"}) {
    const auto values = written.Values("MS:1000786", name);
    ASSERT_EQ(values.size(), 2U) << name;
    EXPECT_EQ(values[0], expected++) << name;
    EXPECT_TRUE(std::isnan(values[1])) << name;
  }
  EXPECT_THAT(written.Values("MS:1000786", "counted"), ElementsAre(1, 0));
}

TEST(PeakArrays, PeaksAscendAndThoseThatFittedOnesStandForAreLeftOut) {
  Peaks peaks = PeaksAt({300, 100, 200, 150});
  peaks[2].row.IsOverlapped = true;
  const Written written = WrittenPeaks({}, peaks);
  EXPECT_THAT(written.Values("MS:1000514"), ElementsAre(100, 150, 300));
  EXPECT_THAT(written.Values("MS:1000515"), ElementsAre(1000, 1500, 3000));
}

TEST(PeakArrays, AreThoseOfACentroidSpectrumInTheUnitGiven) {
  const TslTool::SpectrumArrays arrays = TslTool::PeakArrays(PeaksAt({100}), TslTool::Cv::kCountsPerSecond);
  EXPECT_EQ(arrays.representation.accession, TslTool::Cv::kCentroidSpectrum.accession);
  EXPECT_EQ(arrays.unit.accession, TslTool::Cv::kCountsPerSecond.accession);
}

}  // namespace
}  // namespace tests
