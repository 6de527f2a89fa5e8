#include <tslbl/method/TuneRun.h>

#include "RecordCheck.h"
#include "method/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, TuneRun) {
  CheckRecord<TuneRun>({
      {"TuneId", [](auto& r) { r.Records = 1, r.TuneId = 4294967295; }},
      {"Id", [](auto& r) { r.TuneId = 7; }, XmlOnly},
      {"Records", [](auto& r) { r.Records = 7; }, XmlOnly},
      {"SettleDelay", [](auto& r) { r.SettleDelay = 4294967295; }, XmlOnly},
      {"Info", [](auto& r) { r.Info.Type = DDInfo::PeakPark; }, XmlOnly},
      {"TuneId.SettleDelay", [](auto& r) { r.SettleDelay = 1; }},
      {"TuneId.Info", [](auto& r) { r.Info = SampleDDInfo(); }},
  });
}

TEST(Golden, TuneRun) { CheckGolden(SampleTuneRun(), "TuneRun.v2"); }
TEST(TuneRun, CutShortIsRefused) { CheckCutShort(SampleTuneRun()); }

TEST(Golden, TuneRunOfVersion1HasNoDelayAndOneRecord) {
  EXPECT_EQ(FromBytes<TuneRun>(GoldenBytes("TuneRun.v1")), TuneRun(3, 1, SampleDDInfo()));
}

TEST(TuneRun, OfVersion1CutShortIsRefused) {
  const std::string whole = GoldenBytes("TuneRun.v1");
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_NE(ReadFailure<TuneRun>(whole.substr(0, length)), "") << length;
}

TEST(TuneRun, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 3u})
    EXPECT_EQ(ReadFailure<TuneRun>(Bytes(version), SampleTuneRun()), "Unknown TuneRun version.");
}

TEST(TuneRun, LosesItsNumberOfRecordsInBytes) {
  EXPECT_EQ(FromBytes<TuneRun>(ToBytes(TuneRun(3, 7))), TuneRun(3, 1));
}

TEST(TuneRun, StoresA1ForItsRecords) { EXPECT_EQ(ToBytes(TuneRun(3, 7)), ToBytes(TuneRun(3, 1))); }

TEST(TuneRun, HasOneRecordWhateverItsBytesSay) {
  std::string bytes = ToBytes(TuneRun(3, 1));
  bytes.replace(8, 4, Bytes(99u));
  EXPECT_EQ(FromBytes<TuneRun>(bytes), TuneRun(3, 1));
}

TEST(TuneRun, KeepsItsNumberOfRecordsInADocument) {
  EXPECT_EQ(FromXml<TuneRun>(ToXml(TuneRun(3, 7))), TuneRun(3, 7));
}

TEST(TuneRun, IsAnElementOfAttributesWithItsDataDependentBehaviour) {
  TuneRun run(3, 7);
  run.SettleDelay = 500000;
  EXPECT_EQ(ToXml(run),
            L"<TuneRun TuneId=\"3\" Records=\"7\" SettleDelay=\"500000\">\n"
            L"  <DDInfo Type=\"None\" />\n"
            L"</TuneRun>\n");
}

TEST(TuneRun, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml(L"<TuneRun />", SampleTuneRun()), SampleTuneRun());
  EXPECT_EQ(FromXml(L"<Other />", SampleTuneRun()), SampleTuneRun());
}

TEST(TuneRun, IsMadeWithoutADelay) {
  EXPECT_EQ(TuneRun(3, 7).SettleDelay, 0u);
  EXPECT_EQ(TuneRun(3, 7).Info, DDInfo());
  EXPECT_EQ(TuneRun(3, 7, SampleDDInfo()).Info, SampleDDInfo());
}

TEST(TuneRun, HasNoDump) { EXPECT_EQ(DumpOf(SampleTuneRun()), L""); }

}  // namespace
