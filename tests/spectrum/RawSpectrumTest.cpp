#include <RecordCheck.h>

#include <tslbl/spectrum/RawSpectrum.h>

using namespace TslBL;
using namespace tests;

namespace {

RawSpectrumInfo SampleRawSpectrumInfo() {
  RawSpectrumInfo info;
  info.Id = 4000000000;
  info.TimeStamp = 123456;
  info.TuneId = 7;
  info.TIC = 917504.0;
  return info;
}

RawSpectrum SampleRawSpectrum() {
  RawSpectrum raw;
  raw.info = SampleRawSpectrumInfo();
  raw.counts = {1.5, 0.0, 250.25};
  return raw;
}

}  // namespace

TEST(AllRecords, RawSpectrumInfo) {
  CheckRecord<RawSpectrumInfo>({
      {"Id", [](auto& r) { r.Id = 1; }},
      {"TimeStamp", [](auto& r) { r.TimeStamp = 2; }},
      {"TuneId", [](auto& r) { r.TuneId = 3; }},
      {"TIC", [](auto& r) { r.TIC = 4.0; }},
  });
}
TEST(AllRecords, RawSpectrum) {
  CheckRecord<RawSpectrum>({
      {"info", [](auto& r) { r.info.Id = 1; }},
      {"counts", [](auto& r) { r.counts = {1.0}; }},
  });
}
TEST(Golden, RawSpectrumInfo) { CheckGolden(SampleRawSpectrumInfo(), "RawSpectrumInfo.v2"); }
TEST(Golden, RawSpectrum) { CheckGolden(SampleRawSpectrum(), "RawSpectrum.v1"); }
TEST(CutShort, RawSpectrumInfo) { CheckCutShort(SampleRawSpectrumInfo()); }
TEST(CutShort, RawSpectrum) { CheckCutShort(SampleRawSpectrum()); }

TEST(RawSpectrumInfo, IsAllZeroByDefault) {
  EXPECT_EQ(ToBytes(RawSpectrumInfo()), Bytes(2u, 0u, 0u, 0u, 0.0));
}

TEST(RawSpectrumInfo, OfVersion1HasNoId) {
  RawSpectrumInfo expected = SampleRawSpectrumInfo();
  expected.Id = 0;
  EXPECT_EQ(FromBytes<RawSpectrumInfo>(GoldenBytes("RawSpectrumInfo.v1"), SampleRawSpectrumInfo()), expected);
}

TEST(RawSpectrumInfo, OfVersion1IsReadInsideARawSpectrum) {
  const std::string bytes =
      Bytes(1u) + GoldenBytes("RawSpectrumInfo.v1") + Bytes(std::vector<double>{1.0, 2.0});
  const RawSpectrum raw = FromBytes<RawSpectrum>(bytes);
  EXPECT_EQ(raw.info.TimeStamp, 123456u);
  EXPECT_EQ(raw.counts, (std::vector<double>{1.0, 2.0}));
}

TEST(RawSpectrumInfo, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 3u})
    EXPECT_EQ(ReadFailure<RawSpectrumInfo>(Bytes(version), SampleRawSpectrumInfo()),
              "Unknown RawSpectrumInfo version.");
}

TEST(RawSpectrum, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<RawSpectrum>(Bytes(version), SampleRawSpectrum()), "Unknown RawSpectrum version.");
  EXPECT_EQ(ReadFailure<RawSpectrum>(Bytes(1u, 3u), SampleRawSpectrum()), "Unknown RawSpectrumInfo version.");
}

TEST(RawSpectrum, DoesNotTrustTheNumberOfCounts) {
  EXPECT_EQ(ReadFailure<RawSpectrum>(Bytes(1u, 2u, 1u, 1u, 1u, 1.0, 0xFFFFFFFFu, 1.0)),
            "Unexpected end of stream.");
}

TEST(RawSpectrum, Dumps) {
  EXPECT_EQ(DumpOf(SampleRawSpectrum()),
            L"  Id:\t4000000000\r\n  TimeStamp:\t123456\r\n  TuneId:\t7\r\n  TIC:\t917504\r\n"
            L"  counts:\t3 values\r\n");
}
