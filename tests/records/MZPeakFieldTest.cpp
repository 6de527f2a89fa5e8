#include <RecordCheck.h>

#include <tslbl/records/MZPeakField.h>

using namespace TslBL;
using namespace tests;

namespace {

const auto kNoField = static_cast<MZPeakField::Types>(4);

struct Row {
  MZPeakField::Types type;
  std::uint32_t number;
  const wchar_t* text;
  const wchar_t* label;
};
const Row kRows[] = {
    {MZPeakField::Ampl, 0, L"Ampl", L"Amplitude"},
    {MZPeakField::Mass, 1, L"Mass", L"Mass"},
    {MZPeakField::Res, 2, L"Res", L"Resolution"},
    {MZPeakField::Width, 3, L"Width", L"Width"},
};

}  // namespace

TEST(AllRecords, MZPeakField) {
  CheckRecord<MZPeakField>({{"Type", [](auto& r) { r.Type = MZPeakField::Width; }}});
}
TEST(Golden, MZPeakField) { CheckGolden(MZPeakField(MZPeakField::Res), "MZPeakField.v1"); }
TEST(CutShort, MZPeakField) { CheckCutShort(MZPeakField(MZPeakField::Res)); }

TEST(MZPeakField, IsAmplByDefault) { EXPECT_EQ(MZPeakField().Type, MZPeakField::Ampl); }

TEST(MZPeakField, EveryTypeHasItsNumberTextAndLabel) {
  for (const Row& row : kRows) {
    EXPECT_EQ(row.type, row.number);
    EXPECT_EQ(MZPeakField::CvtType(row.type), row.text);
    EXPECT_EQ(MZPeakField::CvtType(row.text), row.type);
    EXPECT_EQ(MZPeakField(row.type).FieldToString(), row.label);
  }
}

TEST(MZPeakField, NumberWithoutANameIsCalledWidth) {
  EXPECT_EQ(MZPeakField::CvtType(kNoField), L"Width");
  EXPECT_EQ(MZPeakField(kNoField).FieldToString(), L"Width");
}

TEST(MZPeakField, TextsIgnoreCase) {
  EXPECT_EQ(MZPeakField::CvtType(L"aMPL"), MZPeakField::Ampl);
  EXPECT_EQ(MZPeakField::CvtType(L"MASS"), MZPeakField::Mass);
  EXPECT_EQ(MZPeakField::CvtType(L"res"), MZPeakField::Res);
}

TEST(MZPeakField, AnyUnknownTextIsWidth) {
  for (const wchar_t* text : {L"", L"Resolution", L"Amplitude", L"0", L"Mass "})
    EXPECT_EQ(MZPeakField::CvtType(text), MZPeakField::Width);
}

TEST(MZPeakField, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<MZPeakField>(Bytes(version, 1u)), "Unknown MZPeakField version.");
}

TEST(MZPeakField, WritesItsTypeAsAnAttribute) {
  EXPECT_EQ(ToXml(MZPeakField(MZPeakField::Mass)), L"<MZPkFld Type=\"Mass\" />\n");
  EXPECT_EQ(ToXml(MZPeakField(kNoField)), L"<MZPkFld Type=\"Width\" />\n");
}

TEST(MZPeakField, KeepsItsTypeWithoutElementOrAttribute) {
  for (const auto type : {MZPeakField::Mass, kNoField}) {
    EXPECT_EQ(FromXml<MZPeakField>(L"<Other Type='Res' />", type).Type, type);
    EXPECT_EQ(FromXml<MZPeakField>(L"<MZPkFld />", type).Type, type);
  }
}

TEST(MZPeakField, ReadsUnknownTextOfADocumentAsWidth) {
  EXPECT_EQ(FromXml<MZPeakField>(L"<MZPkFld Type='' />").Type, MZPeakField::Width);
}

TEST(MZPeakField, IsOrderedByNumber) {
  EXPECT_TRUE(MZPeakField(MZPeakField::Ampl) < MZPeakField(MZPeakField::Mass));
  EXPECT_FALSE(MZPeakField(MZPeakField::Width) < MZPeakField(MZPeakField::Res));
  EXPECT_FALSE(MZPeakField(MZPeakField::Res) < MZPeakField(MZPeakField::Res));
}

TEST(MZPeakField, Dumps) { EXPECT_EQ(DumpOf(MZPeakField(MZPeakField::Res)), L"  Type:\tRes\r\n"); }
