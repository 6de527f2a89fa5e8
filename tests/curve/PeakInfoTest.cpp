#include <RecordCheck.h>

#include <tslbl/curve/PeakInfo.h>

using namespace TslBL;
using namespace tests;

namespace {

PeakInfo SamplePeakInfo() {
  PeakInfo p;
  p.startIdx = 10;
  p.apexIdx = 14;
  p.apexAmpl = 100.5;
  p.endIdx = 20;
  p.maxIdx = 14.25;
  p.maxAmpl = 101.5;
  p.maxBaseline = 2.5;
  p.centroidIdx = 14.5;
  p.centroidAmpl = 99.5;
  p.baselineAmpl = 3.5;
  p.halfHeightLeftIdx = 12.75;
  p.halfHeightRightIdx = 16.75;
  p.areaIntercept = 4.5;
  p.areaStartIdx = 11.25;
  p.areaEndIdx = 18.25;
  p.area = 512.5;
  p.noiseAmpl = 1.5;
  p.useMax = true;
  p.overlapGroup = 0xFFFFFFFE;
  return p;
}

}  // namespace

TEST(AllRecords, PeakInfo) {
  CheckRecord<PeakInfo>({
      {"startIdx", [](auto& p) { p.startIdx = 1; }},
      {"apexIdx", [](auto& p) { p.apexIdx = 1; }},
      {"apexAmpl", [](auto& p) { p.apexAmpl = 1.5; }},
      {"endIdx", [](auto& p) { p.endIdx = 1; }},
      {"maxIdx", [](auto& p) { p.maxIdx = 1.5; }},
      {"maxAmpl", [](auto& p) { p.maxAmpl = 1.5; }},
      {"maxBaseline", [](auto& p) { p.maxBaseline = 1.5; }},
      {"centroidIdx", [](auto& p) { p.centroidIdx = 1.5; }},
      {"centroidAmpl", [](auto& p) { p.centroidAmpl = 1.5; }},
      {"baselineAmpl", [](auto& p) { p.baselineAmpl = 1.5; }},
      {"halfHeightLeftIdx", [](auto& p) { p.halfHeightLeftIdx = 1.5; }},
      {"halfHeightRightIdx", [](auto& p) { p.halfHeightRightIdx = 1.5; }},
      {"areaIntercept", [](auto& p) { p.areaIntercept = 1.5; }},
      {"areaStartIdx", [](auto& p) { p.areaStartIdx = 1.5; }},
      {"areaEndIdx", [](auto& p) { p.areaEndIdx = 1.5; }},
      {"area", [](auto& p) { p.area = 1.5; }},
      {"noiseAmpl", [](auto& p) { p.noiseAmpl = 1.5; }},
      {"useMax", [](auto& p) { p.useMax = true; }},
      {"overlapGroup", [](auto& p) { p.overlapGroup = 1; }},
  });
}
TEST(Golden, PeakInfo) { CheckGolden(SamplePeakInfo(), "PeakInfo.v1"); }
TEST(CutShort, PeakInfo) { CheckCutShort(SamplePeakInfo()); }

TEST(PeakInfo, IsAllZeroByDefault) {
  const std::vector<double> zeros(13, 0.0);
  EXPECT_EQ(ToBytes(PeakInfo()), Bytes(1u, 0u, 0u, 0.0, 0u) + Bytes(zeros).substr(4) + Bytes(false, 0u));
}

TEST(PeakInfo, DefaultsToNoOverlapGroup) {
  EXPECT_EQ(NoOverlapGroupId, 0u);
  EXPECT_EQ(PeakInfo().overlapGroup, NoOverlapGroupId);
}

TEST(PeakInfo, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu}) {
    const std::string bytes = Bytes(version) + ToBytes(SamplePeakInfo()).substr(4);
    EXPECT_EQ(ReadFailure<PeakInfo>(bytes, SamplePeakInfo()), "Unknown PeakInfo version.");
  }
}

TEST(PeakInfo, OrdersByApexIdxAlone) {
  PeakInfo low = SamplePeakInfo();
  PeakInfo high;
  high.apexIdx = low.apexIdx + 1;
  EXPECT_TRUE(low < high);
  EXPECT_FALSE(high < low);
  high.apexIdx = low.apexIdx;
  EXPECT_FALSE(low < high);
  EXPECT_FALSE(high < low);
}

TEST(PeakInfo, IsReportedAtItsCentroidUnlessItUsesItsMaximum) {
  PeakInfo p = SamplePeakInfo();
  EXPECT_EQ(p.ReportedIdx(), 14.25);
  EXPECT_EQ(p.ReportedAmpl(), 101.5);
  p.useMax = false;
  EXPECT_EQ(p.ReportedIdx(), 14.5);
  EXPECT_EQ(p.ReportedAmpl(), 99.5);
}
