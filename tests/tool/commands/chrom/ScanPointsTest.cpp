#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include <tool/TempFile.h>
#include <tool/commands/chrom/ScanPoints.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using TslTool::ExtractedRange;
using TslTool::ScanPoint;

const std::vector<double> kMasses = {100.0, 100.5, 101.0, 102.0};
const std::vector<double> kAmplitude = {1.0, 2.0, 4.0, 8.0};

struct Case {
  double from, to, sum;
  std::size_t points;
};

TEST(RangeValue, SumsThePointsFromEndToEnd) {
  const Case cases[] = {{100.5, 101.0, 6.0, 2}, {100.4, 101.9, 6.0, 2}, {90.0, 110.0, 15.0, 4},
                        {101.1, 101.9, 0.0, 0}, {90.0, 99.0, 0.0, 0},   {103.0, 104.0, 0.0, 0}};
  for (const Case& each : cases) {
    const auto value = TslTool::ValueOf({'A', each.from, each.to}, kMasses, kAmplitude);
    EXPECT_EQ(value.sum, each.sum) << each.from;
    EXPECT_EQ(value.points, each.points) << each.from;
  }
}

TEST(RangeValue, HasAMeanOfZeroWithoutPoints) {
  EXPECT_EQ((TslTool::RangeValue{6.0, 2}.Mean()), 3.0);
  EXPECT_EQ(TslTool::RangeValue{}.Mean(), 0.0);
}

std::vector<ScanPoint> PointsOf(const std::string& spectra, const TslTool::SpectrumChoice& choice = {}) {
  const TempFile file("a.mzML", MzML(spectra));
  const auto source =
      TslTool::OpenMzMLPoints(TslTool::OpenForeign(file.Path()), choice, {{'A', 100.4, 101.0}});
  std::vector<ScanPoint> points;
  while (const auto next = source->Next()) points.push_back(next());
  return points;
}

TEST(ScanPoints, AreTheSumTheLargestAndTheRangesOfAScan) {
  const auto points = PointsOf(PlainSpectrum("scan=7", kMasses, kAmplitude));
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(points[0].scan, 7u);
  EXPECT_EQ(points[0].rtSeconds, 120.0);
  EXPECT_EQ(points[0].tic, 15.0);
  EXPECT_EQ(points[0].basePeak, 8.0);
  EXPECT_EQ(points[0].ranges[0].sum, 6.0);
  EXPECT_EQ(points[0].mzFrom, 100.0);
  EXPECT_EQ(points[0].mzTo, 102.0);
}

TEST(ScanPoints, OfAnEmptyScanAreZero) {
  const auto points = PointsOf(PlainSpectrum("scan=1", {}, {}));
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(points[0].tic, 0.0);
  EXPECT_EQ(points[0].basePeak, 0.0);
}

TEST(ScanPoints, OfCentroidSpectraAreTaken) {
  const std::string arrays =
      ArrayOf(kMz, BytesOf<double>({100.0, 300.0})) + ArrayOf(kIntensity, BytesOf<double>({3.0, 4.0}));
  const auto points =
      PointsOf(SpectrumOf("scan=1", 2, arrays, Term("MS:1000511", "value=\"1\"") + Term(kCentroid)));
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(points[0].tic, 7.0);
}

TEST(ScanPoints, OfARunKnowTheirTuneAndTheAmplitudeOfACount) {
  const auto source = TslTool::OpenRunPoints("", {}, {});
  const ScanPoint point = source->Next()();
  EXPECT_EQ(point.scan, 1u);
  EXPECT_EQ(point.msLevel, 1);
  EXPECT_EQ(point.polarity, 1);
  EXPECT_GT(point.countAmpl, 0.0);
  EXPECT_GT(point.tic, point.basePeak);
}

}  // namespace
}  // namespace tests
