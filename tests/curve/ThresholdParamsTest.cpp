#include <RecordCheck.h>

#include <tslbl/curve/ThresholdParams.h>
#include <cmath>

using namespace TslBL;
using namespace tests;

namespace {

ThresholdParams Threshold(double value) {
  ThresholdParams p;
  p.Value = value;
  return p;
}

double Read(const std::wstring& xml) { return FromXml<ThresholdParams>(xml, Threshold(7.5)).Value; }

}  // namespace

TEST(AllRecords, ThresholdParams) {
  CheckRecord<ThresholdParams>({{"Value", [](auto& p) { p.Value = 1.5; }}});
}
TEST(Golden, ThresholdParams) { CheckGolden(Threshold(-12.25), "ThresholdParams.v1"); }
TEST(CutShort, ThresholdParams) { CheckCutShort(Threshold(-12.25)); }

TEST(ThresholdParams, IsZeroByDefault) { EXPECT_EQ(ThresholdParams().Value, 0.0); }

TEST(ThresholdParams, ComparesExactly) {
  EXPECT_FALSE(Threshold(1.0) == Threshold(std::nextafter(1.0, 2.0)));
}

TEST(ThresholdParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu})
    EXPECT_EQ(ReadFailure<ThresholdParams>(Bytes(version, 1.5), Threshold(7.5)),
              "Unknown ThresholdParams version.");
}

TEST(ThresholdParams, StandsInXmlAsTheTextOfItsElement) {
  EXPECT_EQ(ToXml(Threshold(12.5)), L"<Threshold>12.5</Threshold>\n");
  EXPECT_EQ(Read(L"<Threshold>12.5</Threshold>"), 12.5);
}

TEST(ThresholdParams, KeepsItsValueWithoutAUsableNumber) {
  for (const wchar_t* xml :
       {L"<Threshold/>", L"<Threshold></Threshold>", L"<Threshold>abc</Threshold>", L"<Other>12.5</Other>"})
    EXPECT_EQ(Read(xml), 7.5);
}

TEST(ThresholdParams, KeepsSixDigitsInXml) {
  EXPECT_EQ(FromXml<ThresholdParams>(ToXml(Threshold(1.2345678))).Value, 1.23457);
}

TEST(ThresholdParams, Dumps) { EXPECT_EQ(DumpOf(Threshold(12.5)), L"  Value:\t12.5\r\n"); }
