#include <RecordCheck.h>

#include <tslbl/chromatogram/ICRange.h>

using namespace TslBL;
using namespace tests;

namespace {

ICRange SampleICRange() { return {ICRange::Time, 1500, 60000}; }

const auto kNotAsNamed = static_cast<ICRange::Types>(7);

}  // namespace

TEST(AllRecords, ICRange) {
  CheckRecord<ICRange>({
      {"Type", [](auto& r) { r.Type = ICRange::SpecId; }},
      {"Start", [](auto& r) { r.Start = 6; }, BinaryOnly},
      {"End", [](auto& r) { r.End = 7; }, BinaryOnly},
  });
}
TEST(Golden, ICRange) { CheckGolden(SampleICRange(), "ICRange.v1"); }
TEST(CutShort, ICRange) { CheckCutShort(SampleICRange()); }

TEST(ICRange, IsTheWholeRunByDefault) { EXPECT_EQ(ICRange(), ICRange(ICRange::Full, 0, 0)); }

TEST(ICRange, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<ICRange>(Bytes(version, 0u, 1u, 2u)), "Unknown ICRange version.");
}

TEST(ICRange, TheWholeRunHasNoEndsInXml) {
  EXPECT_EQ(ToXml(ICRange()), L"<ICRange Type=\"Full\" />\n");
  EXPECT_EQ(FromXml<ICRange>(L"<ICRange Type='Full' Start='1' End='2' />"), ICRange());
}

TEST(ICRange, APartHasItsEndsInXml) {
  EXPECT_EQ(ToXml(SampleICRange()), L"<ICRange Type=\"Time\" Start=\"1500\" End=\"60000\" />\n");
  for (const auto type : {ICRange::Time, ICRange::SpecId})
    EXPECT_EQ(FromXml<ICRange>(ToXml(ICRange(type, 3, 4294967295u))), ICRange(type, 3, 4294967295u));
}

TEST(ICRange, APartKeepsEndsThatTheDocumentLacks) {
  EXPECT_EQ(FromXml<ICRange>(L"<ICRange Type='SpecId' End='9' />"), ICRange(ICRange::SpecId, 0, 9));
}

TEST(ICRange, StaysAsItIsWithoutItsElement) {
  EXPECT_EQ(FromXml<ICRange>(L"<Other Type='Full' />", SampleICRange()), SampleICRange());
}

TEST(ICRange, TypeTextsBothWays) {
  const std::pair<ICRange::Types, const wchar_t*> texts[] = {
      {ICRange::Full, L"Full"}, {ICRange::Time, L"Time"}, {ICRange::SpecId, L"SpecId"}};
  for (const auto& [type, text] : texts) {
    EXPECT_EQ(ICRange::CvtType(type), text);
    EXPECT_EQ(ICRange::CvtType(std::wstring(text)), type);
  }
  EXPECT_EQ(ICRange::CvtType(kNotAsNamed), L"SpecId");
  EXPECT_EQ(ICRange::CvtType(L"fULL"), ICRange::Full);
  EXPECT_EQ(ICRange::CvtType(L"TIME"), ICRange::Time);
  for (const wchar_t* text : {L"", L"Ful", L"Time ", L"specid", L"anything"})
    EXPECT_EQ(ICRange::CvtType(text), ICRange::SpecId) << testing::PrintToString(std::wstring(text));
}

TEST(ICRange, NumberWithoutANameHasItsEndsInXmlAndIsKeptInBinary) {
  const ICRange range(kNotAsNamed, 1, 2);
  EXPECT_EQ(ToXml(range), L"<ICRange Type=\"SpecId\" Start=\"1\" End=\"2\" />\n");
  EXPECT_EQ(FromBytes<ICRange>(ToBytes(range)), range);
}

TEST(ICRange, Dumps) {
  EXPECT_EQ(DumpOf(SampleICRange()), L"  Type:\tTime\r\n  Start:\t1500\r\n  End:\t60000\r\n");
}

TEST(LoadICRange, AppendsTheItemsOfAListInTheirOrder) {
  TslCommon::XMLParser parser;
  ASSERT_TRUE(parser.LoadText(L"<L><ICRange Type='Time' Start='1' End='2'/><ICRange Type='Full'/></L>"));
  int count = 0;
  ASSERT_TRUE(parser.StartList(L"L", count));
  std::vector<ICRange> ranges(1);
  for (; count > 0; --count) LoadICRange(parser, ranges);
  EXPECT_EQ(ranges, (std::vector<ICRange>{{}, {ICRange::Time, 1, 2}, {}}));
}

TEST(LoadICRange, AppendsADefaultForAnAbsentElement) {
  TslCommon::XMLParser parser;
  std::vector<ICRange> ranges;
  LoadICRange(parser, ranges);
  EXPECT_EQ(ranges, std::vector<ICRange>(1));
}
