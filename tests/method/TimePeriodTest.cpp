#include <tslbl/method/TimePeriod.h>

#include "RecordCheck.h"
#include "method/Samples.h"

namespace {

using namespace tests;
using Items = std::vector<std::vector<std::uint32_t>>;

TEST(AllRecords, TimePeriod) {
  CheckRecord<TimePeriod>({
      {"Save", [](auto& r) { r.Save = false; }},
      {"Loops", [](auto& r) { r.Loops = 4294967295; }},
      {"Timeout", [](auto& r) { r.Timeout = 4294967295; }},
      {"SettleDelay", [](auto& r) { r.SettleDelay = 4294967295; }},
      {"Sequence", [](auto& r) { r.Sequence = {{}}; }},
      {"Item", [](auto& r) { r.Sequence = {{5}}; }},
      {"Sequence.Ids", [](auto& r) { r.Sequence[0] = {5}; }},
      {"Item.Id", [](auto& r) { r.Sequence[0][0] = 4294967295; }},
  });
}

TEST(Golden, TimePeriod) { CheckGolden(SampleTimePeriod(), "TimePeriod.v2"); }
TEST(TimePeriod, CutShortIsRefused) { CheckCutShort(SampleTimePeriod()); }

TEST(Golden, TimePeriodOfVersion1HasNoDelay) {
  TimePeriod expected = SampleTimePeriod();
  expected.SettleDelay = 0;
  EXPECT_EQ(FromBytes<TimePeriod>(GoldenBytes("TimePeriod.v1")), expected);
}

TEST(TimePeriod, OfVersion1CutShortIsRefused) {
  const std::string whole = GoldenBytes("TimePeriod.v1");
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_NE(ReadFailure<TimePeriod>(whole.substr(0, length)), "") << length;
}

TEST(TimePeriod, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 3u})
    EXPECT_EQ(ReadFailure<TimePeriod>(Bytes(version), SampleTimePeriod()), "Unknown TimePeriod version.");
}

TEST(TimePeriod, StoresEachCountAheadOfWhatItCounts) {
  EXPECT_EQ(ToBytes(SampleTimePeriod()), Bytes(2u, false, 20u, 60000u, 500000u,  //
                                               3u, 1u, 1u, 2u, 2u, 4u, 1u, 3u));
}

TEST(TimePeriod, WithHugeCountsIsRefused) {
  EXPECT_EQ(ReadFailure<TimePeriod>(Bytes(2u, true, 0u, 0u, 0u, 4294967295u)), "Unexpected end of stream.");
  EXPECT_EQ(ReadFailure<TimePeriod>(Bytes(2u, true, 0u, 0u, 0u, 1u, 4294967295u)),
            "Unexpected end of stream.");
}

TEST(TimePeriod, IsAnElementWithTheIdsOfEachItem) {
  EXPECT_EQ(ToXml(SampleTimePeriod()),
            L"<TimePeriod Save=\"false\" Loops=\"20\" Timeout=\"60000\" SettleDelay=\"500000\">\n"
            L"  <Sequence>\n"
            L"    <TuneRunIds>1</TuneRunIds>\n"
            L"    <TuneRunIds>2 4</TuneRunIds>\n"
            L"    <TuneRunIds>3</TuneRunIds>\n"
            L"  </Sequence>\n"
            L"</TimePeriod>\n");
}

TEST(TimePeriod, WritesAnItemWithoutIdsAsAnEmptyElement) {
  TimePeriod period;
  period.Sequence = {{}};
  EXPECT_NE(ToXml(period).find(L"<TuneRunIds />"), std::wstring::npos) << ToXml(period).c_str();
  EXPECT_EQ(FromXml<TimePeriod>(ToXml(period)).Sequence, Items{{}});
}

TEST(TimePeriod, ReadsIdsUntilThereIsNone) {
  const auto read = FromXml<TimePeriod>(
      L"<TimePeriod><Sequence><TuneRunIds>1 2 x 3</TuneRunIds><TuneRunIds> 4\n5 </TuneRunIds></Sequence>"
      L"</TimePeriod>");
  EXPECT_EQ(read.Sequence, (Items{{1, 2}, {4, 5}}));
}

TEST(TimePeriod, HasNoItemsWhereTheDocumentHasNoSequence) {
  TimePeriod expected = SampleTimePeriod();
  expected.Sequence.clear();
  EXPECT_EQ(FromXml(L"<TimePeriod />", SampleTimePeriod()), expected);
}

TEST(TimePeriod, StaysAsItWasWithoutItsElement) {
  EXPECT_EQ(FromXml(L"<Other />", SampleTimePeriod()), SampleTimePeriod());
}

TEST(TimePeriod, HasNoDump) { EXPECT_EQ(DumpOf(SampleTimePeriod()), L""); }

}  // namespace
