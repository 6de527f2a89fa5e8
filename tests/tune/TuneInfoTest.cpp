#include <tslbl/tune/TuneInfo.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, TuneInfo) {
  CheckRecord<TuneInfo>({
      {"Name", [](auto& r) { r.Name = L" name "; }},
      {"Comment", [](auto& r) { r.Comment = L"two\nlines"; }},
      {"LastSave", [](auto& r) { r.LastSave = -9007199254740993; }},
  });
}

TEST(Golden, TuneInfo) { CheckGolden(SampleTuneInfo(), "TuneInfo.v1"); }
TEST(TuneInfo, CutShortIsRefused) { CheckCutShort(SampleTuneInfo()); }

TEST(TuneInfo, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<TuneInfo>(Bytes(version), SampleTuneInfo()), "Unknown TuneInfo version.");
}

TEST(TuneInfo, IsAnElementInfo) {
  EXPECT_EQ(ToXml(SampleTuneInfo()),
            L"<Info>\n"
            L"  <Name>Sp\u00E4t</Name>\n"
            L"  <Comment>After venting</Comment>\n"
            L"  <LastSave>1234567890123</LastSave>\n"
            L"</Info>\n");
}

TEST(TuneInfo, KeepsWhatADocumentLacks) {
  TuneInfo expected = SampleTuneInfo();
  expected.Comment = L"new";
  EXPECT_EQ(FromXml(L"<Info><Comment>new</Comment></Info>", SampleTuneInfo()), expected);
  EXPECT_EQ(FromXml(L"<Other/>", SampleTuneInfo()), SampleTuneInfo());
}

}  // namespace
