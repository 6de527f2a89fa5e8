#include <RecordCheck.h>

#include <tslbl/calibrate/CalibrateParams.h>

using namespace TslBL;
using namespace tests;

namespace {

CalibrateParams SampleCalibrateParams() {
  CalibrateParams p;
  p.calibrants = {{L"PEG 3", 151.0965}, {L"PEG 4", 195.1227}};
  p.Name = L"PEG";
  p.tolerance = 0.75;
  p.mode = 2;
  return p;
}

}  // namespace

TEST(AllRecords, CalibrateParams) {
  CheckRecord<CalibrateParams>({
      {"calibrants", [](auto& p) { p.calibrants.resize(1); }},
      {"calibrants.Name", [](auto& p) { p.calibrants[0].Name = L"n"; }},
      {"calibrants.MZ", [](auto& p) { p.calibrants[0].MZ = 1.5; }},
      {"Name", [](auto& p) { p.Name = L"n"; }},
      {"tolerance", [](auto& p) { p.tolerance = 1.5; }},
      {"mode", [](auto& p) { p.mode = 7; }},
  });
}
TEST(Golden, CalibrateParams) { CheckGolden(SampleCalibrateParams(), "CalibrateParams.v2"); }
TEST(CutShort, CalibrateParams) { CheckCutShort(SampleCalibrateParams()); }

TEST(Golden, CalibrateParamsOfVersion1HasANumberForItsName) {
  CalibrateParams expected = SampleCalibrateParams();
  expected.Name.clear();
  CalibrateParams named;
  named.Name = L"before";
  EXPECT_EQ(FromBytes<CalibrateParams>(GoldenBytes("CalibrateParams.v1"), named), expected);
}

TEST(CalibrateParams, LooksOneMzAroundByDefault) {
  const CalibrateParams p;
  EXPECT_TRUE(p.calibrants.empty());
  EXPECT_EQ(p.Name, L"");
  EXPECT_EQ(p.tolerance, 1.0);
  EXPECT_EQ(p.mode, 1u);
}

TEST(CalibrateParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 3u})
    EXPECT_EQ(ReadFailure<CalibrateParams>(Bytes(version) + ToBytes(SampleCalibrateParams()).substr(4)),
              "Unknown CalibrateParams version.");
}
