#include <tslbl/tune/IOPoint.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

IOPoint OfType(std::uint32_t type) {
  IOPoint lens = SampleIOPoint();
  lens.Type = static_cast<IOPoint::Types>(type);
  return lens;
}

TEST(AllRecords, IOPoint) {
  CheckRecord<IOPoint>({
      {"Type", [](auto& r) { r.Type = IOPoint::CalibratedType; }},
      {"Single", [](auto& r) { r.Single = 1.5; }},
      {"Calibrated", [](auto& r) { r.Calibrated = 2.5; }, BinaryOnly},
      {"Start", [](auto& r) { r.Start = 3.5; }, BinaryOnly},
      {"End", [](auto& r) { r.End = 4.5; }, BinaryOnly},
      {"StepSize", [](auto& r) { r.StepSize = 5.5; }, BinaryOnly},
      {"Calibrated type", [](auto& r) { r.Type = IOPoint::CalibratedType, r.Calibrated = 2.5; }},
      {"Function type",
       [](auto& r) { r.Type = IOPoint::FunctionType, r.Start = 1, r.End = 2, r.StepSize = 3; }, XmlOnly},
  });
}

TEST(Golden, IOPoint) { CheckGolden(SampleIOPoint(), "IOPoint.v1"); }
TEST(IOPoint, CutShortIsRefused) { CheckCutShort(SampleIOPoint()); }

TEST(Golden, IOPointStoredAsAFunctionIsCalibratedByItsStepSize) {
  IOPoint expected = OfType(1);
  expected.Calibrated = expected.StepSize;
  EXPECT_EQ(FromBytes<IOPoint>(GoldenBytes("IOPoint.v1.function")), expected);
}

TEST(IOPoint, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<IOPoint>(Bytes(version), SampleIOPoint()), "Unknown IOPoint version.");
}

TEST(IOPoint, OfAnUnknownTypeSurvivesInBinary) {
  EXPECT_EQ(FromBytes<IOPoint>(ToBytes(OfType(77))), OfType(77));
}

TEST(IOPoint, IsAnElementWithWhatItsTypeNeeds) {
  EXPECT_EQ(ToXml(OfType(0)), L"<IOPt Type=\"Single\">1.5</IOPt>\n");
  EXPECT_EQ(ToXml(OfType(1)), L"<IOPt Type=\"Calibrated\">-2.25</IOPt>\n");
  EXPECT_EQ(ToXml(OfType(2)),
            L"<IOPt Type=\"Function\">\n"
            L"  <Start>3</Start>\n"
            L"  <End>4</End>\n"
            L"  <StepSize>0.125</StepSize>\n"
            L"</IOPt>\n");
  EXPECT_EQ(ToXml(OfType(3)), L"<IOPt Type=\"Unknown\" />\n");
}

TEST(IOPoint, ReadsOnlyWhatItsTypeCarries) {
  IOPoint expected;
  expected.Type = IOPoint::CalibratedType;
  expected.Calibrated = 7.0;
  EXPECT_EQ(FromXml<IOPoint>(L"<IOPt Type=\"CALIBRATED\">7<Start>1</Start></IOPt>"), expected);
}

TEST(IOPoint, OfAFunctionReadsItsThreeNumbers) {
  IOPoint expected;
  expected.Type = IOPoint::FunctionType;
  expected.Start = 1.0;
  expected.End = 2.0;
  expected.StepSize = 3.0;
  EXPECT_EQ(
      FromXml<IOPoint>(L"<IOPt Type=\"function\"><Start>1</Start><End>2</End><StepSize>3</StepSize></IOPt>"),
      expected);
}

TEST(IOPoint, OfAnotherOrNoTypeTextIsSingle) {
  for (const wchar_t* type : {L" Type=\"single\"", L" Type=\"Unknown\"", L" Type=\"\"", L""}) {
    const IOPoint read = FromXml(std::wstring(L"<IOPt") + type + L">5</IOPt>", SampleIOPoint());
    EXPECT_EQ(read.Type, IOPoint::SingleType) << type;
    EXPECT_EQ(read.Single, 5.0) << type;
  }
}

TEST(IOPoint, WithTextThatIsNoNumberKeepsItsValue) {
  EXPECT_EQ(FromXml(L"<IOPt Type=\"Calibrated\">abc</IOPt>", SampleIOPoint()), SampleIOPoint());
}

}  // namespace
