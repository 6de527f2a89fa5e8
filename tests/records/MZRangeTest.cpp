#include <RecordCheck.h>

#include <tslbl/records/MZRange.h>

using namespace TslBL;
using namespace tests;

namespace {

MZRange SampleMZRange() { return {MZRange::Partial, 12.5, 1234.75}; }

const auto kNotAsNamed = static_cast<MZRange::Types>(7);

}  // namespace

TEST(AllRecords, MZRange) {
  CheckRecord<MZRange>({
      {"Type", [](auto& r) { r.Type = MZRange::Partial; }},
      {"Start", [](auto& r) { r.Start = 6.0; }, BinaryOnly},
      {"End", [](auto& r) { r.End = 7.0; }, BinaryOnly},
  });
}
TEST(Golden, MZRange) { CheckGolden(SampleMZRange(), "MZRange.v1"); }
TEST(CutShort, MZRange) { CheckCutShort(SampleMZRange()); }

TEST(MZRange, IsFullFrom5To3000ByDefault) {
  EXPECT_EQ(MZRange().Type, MZRange::Full);
  EXPECT_EQ(MZRange().Start, 5.0);
  EXPECT_EQ(MZRange().End, 3000.0);
}

TEST(MZRange, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<MZRange>(Bytes(version, 0u, 1.0, 2.0)), "Unknown MZRange version.");
}

TEST(MZRange, FullRangeHasNoLimitsInXml) { EXPECT_EQ(ToXml(MZRange()), L"<MZRange Type=\"Full\" />\n"); }

TEST(MZRange, PartialRangeHasItsLimitsInXml) {
  EXPECT_EQ(ToXml(SampleMZRange()), L"<MZRange Type=\"Partial\" Start=\"12.5\" End=\"1234.75\" />\n");
  EXPECT_EQ(FromXml<MZRange>(ToXml(SampleMZRange())), SampleMZRange());
}

TEST(MZRange, FullRangeDoesNotReadLimitsFromXml) {
  EXPECT_EQ(FromXml<MZRange>(L"<MZRange Type='Full' Start='1' End='2' />"), MZRange());
}

TEST(MZRange, PartialRangeKeepsLimitsThatTheDocumentLacks) {
  EXPECT_EQ(FromXml<MZRange>(L"<MZRange Type='Partial' End='9' />"), MZRange(MZRange::Partial, 5.0, 9.0));
}

TEST(MZRange, StaysAsItIsWithoutItsElement) {
  EXPECT_EQ(FromXml<MZRange>(L"<Other Type='Full' />", SampleMZRange()), SampleMZRange());
}

TEST(MZRange, KeepsItsTypeWithoutTheAttribute) {
  EXPECT_EQ(FromXml<MZRange>(L"<MZRange Start='1' />", SampleMZRange()).Type, MZRange::Partial);
  EXPECT_EQ(FromXml<MZRange>(L"<MZRange Start='1' />", MZRange(kNotAsNamed, 1, 2)).Type, kNotAsNamed);
}

TEST(MZRange, TypeTextsBothWays) {
  EXPECT_EQ(MZRange::CvtType(MZRange::Full), L"Full");
  EXPECT_EQ(MZRange::CvtType(MZRange::Partial), L"Partial");
  EXPECT_EQ(MZRange::CvtType(kNotAsNamed), L"Partial");
  EXPECT_EQ(MZRange::CvtType(L"fULL"), MZRange::Full);
  for (const wchar_t* text : {L"Partial", L"", L"Ful", L"Full ", L"anything"})
    EXPECT_EQ(MZRange::CvtType(text), MZRange::Partial) << testing::PrintToString(std::wstring(text));
}

TEST(MZRange, NumberWithoutANameIsCalledPartialAndKeptInBinary) {
  const MZRange range(kNotAsNamed, 1.0, 2.0);
  EXPECT_EQ(ToXml(range), L"<MZRange Type=\"Partial\" />\n");
  EXPECT_EQ(FromBytes<MZRange>(ToBytes(range)), range);
}

TEST(MZRange, Dumps) {
  EXPECT_EQ(DumpOf(SampleMZRange()), L"  Type:\tPartial\r\n  Start:\t12.5\r\n  End:\t1234.75\r\n");
}

TEST(LoadMZRange, AppendsTheItemsOfAListInTheirOrder) {
  TslCommon::XMLParser parser;
  ASSERT_TRUE(parser.LoadText(L"<L><MZRange Type='Partial' Start='1' End='2'/><MZRange Type='Full'/></L>"));
  int count = 0;
  ASSERT_TRUE(parser.StartList(L"L", count));
  std::vector<MZRange> ranges(1);
  for (; count > 0; --count) LoadMZRange(parser, ranges);
  EXPECT_EQ(ranges, (std::vector<MZRange>{{}, {MZRange::Partial, 1.0, 2.0}, {}}));
}

TEST(LoadMZRange, AppendsADefaultForAnAbsentElement) {
  TslCommon::XMLParser parser;
  std::vector<MZRange> ranges;
  LoadMZRange(parser, ranges);
  EXPECT_EQ(ranges, std::vector<MZRange>(1));
}
