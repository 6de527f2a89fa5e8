#include <RecordCheck.h>

#include <tslbl/records/OverlapPeakInfo.h>

using namespace TslBL;
using namespace tests;

namespace {

OverlapPeakInfo SampleOverlapPeakInfo() {
  OverlapPeakInfo p;
  p.GroupId = 3;
  p.DataPeakId = 4000000000;
  p.Position = 1.5;
  p.Fit5 = 2.5;
  p.Baseline = 3.5;
  p.Height = 4.5;
  p.Fit4 = 5.5;
  p.FWHM = 6.5;
  p.Fit6 = 7.5;
  return p;
}

}  // namespace

TEST(AllRecords, OverlapPeakInfo) {
  CheckRecord<OverlapPeakInfo>({
      {"GroupId", [](auto& r) { r.GroupId = 1; }},
      {"DataPeakId", [](auto& r) { r.DataPeakId = 2; }},
      {"Position", [](auto& r) { r.Position = 3.0; }},
      {"Fit5", [](auto& r) { r.Fit5 = 4.0; }},
      {"Baseline", [](auto& r) { r.Baseline = 5.0; }},
      {"Height", [](auto& r) { r.Height = 6.0; }},
      {"Fit4", [](auto& r) { r.Fit4 = 7.0; }},
      {"FWHM", [](auto& r) { r.FWHM = 8.0; }},
      {"Fit6", [](auto& r) { r.Fit6 = 9.0; }},
  });
}
TEST(Golden, OverlapPeakInfo) { CheckGolden(SampleOverlapPeakInfo(), "OverlapPeakInfo.v1"); }
TEST(CutShort, OverlapPeakInfo) { CheckCutShort(SampleOverlapPeakInfo()); }

TEST(OverlapPeakInfo, IsAllZeroByDefault) {
  EXPECT_EQ(ToBytes(OverlapPeakInfo()), Bytes(1u, 0u, 0u, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0));
}

TEST(OverlapPeakInfo, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<OverlapPeakInfo>(Bytes(version)), "Unknown OverlapPeakInfo version.");
}

TEST(OverlapPeakInfo, IsOrderedByPositionAlone) {
  OverlapPeakInfo left = SampleOverlapPeakInfo();
  OverlapPeakInfo right;
  right.Position = left.Position + 1.0;
  EXPECT_TRUE(left < right);
  EXPECT_FALSE(right < left);
  right.Position = left.Position;
  EXPECT_FALSE(left < right);
  EXPECT_FALSE(right < left);
}

TEST(OverlapPeakInfo, MatchesItsGroup) {
  EXPECT_TRUE(SampleOverlapPeakInfo().GroupMatch(3));
  EXPECT_FALSE(SampleOverlapPeakInfo().GroupMatch(0));
}

TEST(OverlapPeakInfo, Dumps) {
  EXPECT_EQ(DumpOf(SampleOverlapPeakInfo()),
            L"  GroupId:\t3\r\n  DataPeakId:\t4000000000\r\n  Position:\t1.5\r\n  Fit5:\t2.5\r\n"
            L"  Baseline:\t3.5\r\n  Height:\t4.5\r\n  Fit4:\t5.5\r\n  FWHM:\t6.5\r\n  Fit6:\t7.5\r\n");
}
