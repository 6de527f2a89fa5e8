#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <tool/commands/chrom/GatherScans.h>
#include <tool/frame/InputError.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using TslTool::Chromatogram;
using TslTool::CurveChoice;
using TslTool::GatherScans;
using TslTool::ScanPoint;

const CurveChoice& Ranges() {
  static const CurveChoice choice({"A=500-501", "B=600-601"}, {"A-B"});
  return choice;
}

ScanPoint PointAt(std::uint32_t scan, double seconds, double a = 0.0, double b = 0.0) {
  ScanPoint point{scan, seconds, 1, 1};
  point.tic = 100.0 + scan;
  point.basePeak = 10.0 + scan;
  point.mzFrom = 400.0;
  point.mzTo = 700.0;
  point.ranges = {{a, a > 0.0 ? 2u : 0u}, {b, b > 0.0 ? 1u : 0u}};
  return point;
}

GatherScans Gathered(const std::vector<ScanPoint>& points, bool isMean = false, bool isOneLevel = false) {
  GatherScans gather("in.mzML", Ranges(), isMean, isOneLevel);
  for (const ScanPoint& point : points) gather.Add(point);
  return gather;
}

std::string ErrorOf(const std::vector<ScanPoint>& points) {
  try {
    Gathered(points).Curves();
  } catch (const TslTool::InputError& error) {
    return error.what();
  }
  return "";
}

std::vector<std::string> NamesOf(const std::vector<Chromatogram>& curves) {
  std::vector<std::string> names;
  for (const Chromatogram& curve : curves) names.push_back(curve.name);
  return names;
}

TEST(GatherScans, GivesTotalBasePeakAndTheCurvesChosen) {
  const auto curves = Gathered({PointAt(1, 1.0, 5.0, 2.0), PointAt(2, 2.5, 9.0, 3.0)}).Curves();
  EXPECT_THAT(NamesOf(curves), ElementsAre("TIC", "BPC", "A-B"));
  EXPECT_THAT(curves[0].values, ElementsAre(101.0, 102.0));
  EXPECT_THAT(curves[1].values, ElementsAre(11.0, 12.0));
  EXPECT_THAT(curves[2].values, ElementsAre(3.0, 6.0));
  EXPECT_THAT(curves[2].seconds, ElementsAre(1.0, 2.5));
  EXPECT_THAT(curves[2].scans, ElementsAre(1u, 2u));
  EXPECT_EQ(curves[2].title, "m/z 500 to 501-600 to 601");
}

TEST(GatherScans, TakesMeansIfAsked) {
  const auto curves = Gathered({PointAt(1, 1.0, 6.0, 2.0), PointAt(2, 2.0, 8.0, 0.0)}, true).Curves();
  EXPECT_THAT(curves[2].values, ElementsAre(1.0, 4.0));
}

TEST(GatherScans, KnowsTheVarianceOfCounts) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0, 6.0, 2.0), PointAt(2, 2.0, 8.0, 3.0)};
  for (ScanPoint& point : points) point.countAmpl = 10.0;
  const auto curves = Gathered(points).Curves();
  EXPECT_THAT(curves[0].variance, ElementsAre(1010.0, 1020.0));
  EXPECT_THAT(curves[2].variance, ElementsAre(80.0, 110.0));
  EXPECT_THAT(Gathered(points, true).Curves()[2].variance, ElementsAre(35.0, 50.0));
}

TEST(GatherScans, KnowsNoVarianceWithoutCounts) {
  EXPECT_THAT(Gathered({PointAt(1, 1.0), PointAt(2, 2.0)}).Curves()[0].variance, IsEmpty());
}

TEST(GatherScans, TakesTheFirstLevelOfSeveralAndTellsIt) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(2, 2.0), PointAt(3, 2.0), PointAt(4, 3.0)};
  points[1].msLevel = points[3].msLevel = 2;
  const GatherScans gather = Gathered(points);
  EXPECT_THAT(gather.Curves()[0].scans, ElementsAre(1u, 3u));
  EXPECT_THAT(gather.Notes(), ElementsAre("2 scans of MS level 2 left out; --ms-level 2 takes them"));
}

TEST(GatherScans, TakesTheLevelThatThereIs) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(2, 2.0)};
  points[0].msLevel = points[1].msLevel = 2;
  EXPECT_THAT(Gathered(points).Curves(), SizeIs(3));
  EXPECT_THAT(Gathered(points).Notes(), IsEmpty());
}

TEST(GatherScans, NeverMixesPolarities) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(2, 1.5), PointAt(3, 2.0), PointAt(4, 2.5)};
  points[1].polarity = points[3].polarity = -1;
  const GatherScans gather = Gathered(points);
  EXPECT_THAT(NamesOf(gather.Curves()), ElementsAre("TIC (negative)", "BPC (negative)", "A-B (negative)",
                                                    "TIC (positive)", "BPC (positive)", "A-B (positive)"));
  EXPECT_THAT(gather.Curves()[0].scans, ElementsAre(2u, 4u));
  EXPECT_THAT(gather.Warnings()[0], HasSubstr("not mixed: each has curves of its own"));
}

TEST(GatherScans, NeverMixesTunes) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(2, 2.0), PointAt(3, 3.0), PointAt(4, 4.0)};
  points[0].tune = points[1].tune = 5;
  points[2].tune = points[3].tune = 6;
  EXPECT_THAT(NamesOf(Gathered(points).Curves()),
              ElementsAre("TIC (tune 5)", "BPC (tune 5)", "A-B (tune 5)", "TIC (tune 6)", "BPC (tune 6)",
                          "A-B (tune 6)"));
}

TEST(GatherScans, NeverMixesFunctionsOfTheFirstLevel) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(1, 1.5), PointAt(2, 2.0), PointAt(2, 2.5)};
  for (std::size_t i = 0; i < points.size(); ++i) points[i].function = 1 + i % 2;
  EXPECT_THAT(NamesOf(Gathered(points).Curves()),
              ElementsAre("TIC (function 1)", "BPC (function 1)", "A-B (function 1)", "TIC (function 2)",
                          "BPC (function 2)", "A-B (function 2)"));
}

// What they isolate follows the sample.
TEST(GatherScans, FunctionsOfHigherLevelsMakeOneChromatogram) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(2, 2.0)};
  for (std::size_t i = 0; i < points.size(); ++i) {
    points[i].msLevel = 2;
    points[i].function = 2 + static_cast<std::uint32_t>(i);
  }
  EXPECT_THAT(NamesOf(Gathered(points).Curves()), ElementsAre("TIC", "BPC", "A-B"));
}

TEST(GatherScans, WarnsOfAScanThatIsAloneOfItsKind) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(2, 2.0), PointAt(3, 3.0)};
  points[2].tune = 2;
  const GatherScans gather = Gathered(points);
  EXPECT_THAT(gather.Curves(), SizeIs(3));
  EXPECT_THAT(gather.Warnings()[0], HasSubstr("one scan of MS level 1 (tune 2) left out"));
}

TEST(GatherScans, WarnsOfARangeThatNoScanHasPointsIn) {
  EXPECT_THAT(Gathered({PointAt(1, 1.0, 1.0), PointAt(2, 2.0, 1.0)}).Warnings(),
              ElementsAre("no scan has a point in the range B (600 to 601)"));
}

TEST(GatherScans, TellsThatARangeLiesOutsideOfTheScans) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0, 1.0), PointAt(2, 2.0, 1.0)};
  for (ScanPoint& point : points) point.mzTo = 550.0;
  EXPECT_THAT(
      Gathered(points).Warnings(),
      ElementsAre("no scan has a point in the range B (600 to 601), which lies outside of m/z 400 to 550 "
                  "that the scans have"));
}

TEST(GatherScans, RefusesWhatMakesNoChromatogram) {
  const double unknown = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(ErrorOf({PointAt(1, unknown)}), HasSubstr("in.mzML: scan 1: has no retention time"));
  EXPECT_THAT(ErrorOf({PointAt(1, 2.0), PointAt(2, 2.0)}),
              HasSubstr("in.mzML: scan 2: its retention time 2 s does not come after the 2 s of scan 1"));
  EXPECT_THAT(ErrorOf({PointAt(1, 2.0)}),
              HasSubstr("holds 1 scan that was asked for; a chromatogram has two"));
}

TEST(GatherScans, ScansEachOfItsOwnKindMakeNoCurve) {
  std::vector<ScanPoint> points = {PointAt(1, 1.0), PointAt(2, 2.0)};
  points[0].polarity = 1;
  points[1].polarity = -1;
  try {
    Gathered(points).Curves();
    FAIL();
  } catch (const TslTool::InputError& error) {
    EXPECT_EQ(
        error.Reason(),
        "holds 2 scans that were asked for, each of a tune, polarity or function of its own; a chromatogram "
        "has two at least");
  }
}

}  // namespace
}  // namespace tests
