// The record frame, on records made up for it.
//
// Tests: BinaryArchive.cpp, CompareArchive.cpp, DumpArchive.cpp, XmlArchive.cpp,
// tslbl/closed/common/Interfaces.cpp.

#include <gtest/gtest.h>

#include <RecordCheck.h>
#include <tslbl/records/Archive.h>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace TslBL;
using namespace tests;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Vial : Record<Vial> {
  std::uint32_t Slot = 1;
  std::wstring Label;
};

void Describe(Archive& ar, Vial& v) {
  ar.Version(1, "Unknown Vial version.");
  if (const auto element = ar.Element(L"Vial")) {
    ar.Attribute(L"Slot", v.Slot);
    ar.Text(L"Label", v.Label);
  }
}

enum class Wash : std::uint32_t { Water, Methanol, Acetone };

constexpr CodeText kWashTexts[] = {{0, L"Water"}, {1, L"Methanol"}, {1, L"MeOH"}, {2, L"Acetone"}};
constexpr Codes kWash = {kWashTexts};
constexpr Codes kStrictWash = {kWashTexts, true, 0, true};

// A tray with a field of every kind. Version 1 had no temperature and kept its pitch in
// tenths of a millimetre.
struct Tray : Record<Tray> {
  bool Cooled = true;
  bool Locked = false;
  std::int32_t Offset = -3;
  std::uint32_t Rows = 8;
  std::int64_t Serial = 0;
  double Pitch = 9.0;
  double Depth = 40.0;
  Wash Rinse = Wash::Methanol;
  Wash Spare = Wash::Methanol;
  std::wstring Name = L"tray";
  std::vector<double> Heights;
  Vial Reference;
  std::vector<Vial> Vials;
  std::vector<double> Marks;
  double Temperature = 4.0;
};

void Describe(Archive& ar, Tray& t) {
  ar.Version(2, "Unknown Tray version.");
  if (const auto element = ar.Element(L"Sample Tray")) {
    ar(L"Cooled", t.Cooled);
    ar.Flag(L"Lock", t.Locked, L"Locked", L"Open");
    ar(L"Offset", t.Offset);
    ar(L"Rows", t.Rows);
    ar(L"Serial", t.Serial);
    ar(L"Pitch", t.Pitch);
    if (ar.ReadingBinary() && !ar.Since(2)) t.Pitch /= 10.0;
    ar.Near({Archive::Place::Child, L"Depth"}, t.Depth, 0.5);
    ar.Enum(L"Rinse", t.Rinse, kWash);
    ar.EnumAttribute(L"Spare", t.Spare, kStrictWash);
    ar(L"Name", t.Name);
    ar(L"Heights", t.Heights);
    ar.Nested(t.Reference);
    ar.List(L"Vials", t.Vials);
    ar.List(L"Marks", t.Marks, [](Archive& items, double& mark) {
      if (const auto item = items.Element(L"Mark")) items.Text(L"Mark", mark);
    });
    if (ar.Since(2)) ar(L"Temperature", t.Temperature);
  }
}

Vial MakeVial(std::uint32_t slot, const wchar_t* label) {
  Vial vial;
  vial.Slot = slot;
  vial.Label = label;
  return vial;
}

Tray FullTray() {
  Tray tray;
  tray.Cooled = false;
  tray.Locked = true;
  tray.Offset = 7;
  tray.Serial = 9000000000;
  tray.Rinse = Wash::Acetone;
  tray.Name = L" \u00B5 tray\r\n";
  tray.Heights = {1.5, 2.5};
  tray.Reference = MakeVial(9, L"ref");
  tray.Vials = {MakeVial(2, L"b"), MakeVial(1, L"a")};
  tray.Marks = {0.25};
  return tray;
}

TEST(RecordFrame, CarriesEveryKindOfField) {
  CheckRecord<Tray>({
      {"Cooled", [](Tray& t) { t.Cooled = false; }},
      {"Locked", [](Tray& t) { t.Locked = true; }},
      {"Offset", [](Tray& t) { t.Offset = 4; }},
      {"Rows", [](Tray& t) { t.Rows = 4000000000; }},
      {"Serial", [](Tray& t) { t.Serial = -9000000000; }},
      {"Pitch", [](Tray& t) { t.Pitch = 4.5; }},
      {"Depth", [](Tray& t) { t.Depth = 41.0; }},
      {"Rinse", [](Tray& t) { t.Rinse = Wash::Acetone; }},
      {"Spare", [](Tray& t) { t.Spare = Wash::Water; }},
      {"Name", [](Tray& t) { t.Name = L" other "; }},
      {"Heights",
       [](Tray& t) {
         t.Heights = {1.0, -2.5};
       }},
      {"Reference", [](Tray& t) { t.Reference.Slot = 5; }},
      {"Vials",
       [](Tray& t) {
         t.Vials = {MakeVial(2, L"b"), MakeVial(1, L"a")};
       }},
      {"Marks",
       [](Tray& t) {
         t.Marks = {0.5, 0.25};
       }},
      {"Marks.Mark", [](Tray& t) { t.Marks[1] = 0.75; }},
      {"Temperature", [](Tray& t) { t.Temperature = 20.0; }},
  });
}

TEST(RecordFrame, WritesTheVersionThenTheFieldsInTheirOrder) {
  const Tray t = FullTray();
  EXPECT_EQ(ToBytes(t), Bytes(2u, false, true, 7, 8u, std::int64_t{9000000000}, 9.0, 40.0, 2u, 1u, t.Name,
                              t.Heights, 1u, 9u, std::wstring(L"ref"), 2u, 1u, 2u, std::wstring(L"b"), 1u, 1u,
                              std::wstring(L"a"), 1u, 0.25, 4.0));
}

TEST(RecordFrame, WritesADocumentInTheOrderOfTheFields) {
  Vial vial = MakeVial(3, L"blank");
  EXPECT_EQ(ToXml(vial), L"<Vial Slot=\"3\">blank</Vial>\n");
  Tray tray;
  tray.Vials = {vial};
  tray.Heights = {1.5, 1.0 / 3.0};
  EXPECT_EQ(ToXml(tray),
            L"<Sample_x0020_Tray Spare=\"Methanol\">\n"
            L"  <Cooled>true</Cooled>\n  <Lock>Open</Lock>\n  <Offset>-3</Offset>\n  <Rows>8</Rows>\n"
            L"  <Serial>0</Serial>\n  <Pitch>9</Pitch>\n  <Depth>40</Depth>\n  <Rinse>Methanol</Rinse>\n"
            L"  <Name>tray</Name>\n  <Heights>1.5 0.333333</Heights>\n  <Vial Slot=\"1\" />\n"
            L"  <Vials>\n    <Vial Slot=\"3\">blank</Vial>\n  </Vials>\n  <Marks />\n"
            L"  <Temperature>4</Temperature>\n</Sample_x0020_Tray>\n");
}

TEST(RecordFrame, DumpsALineForEachField) {
  const Tray t = FullTray();
  EXPECT_EQ(
      DumpOf(t),
      L"  Cooled:\tfalse\r\n  Lock:\tLocked\r\n  Offset:\t7\r\n  Rows:\t8\r\n  Serial:\t9000000000\r\n"
      L"  Pitch:\t9\r\n  Depth:\t40\r\n  Rinse:\tAcetone\r\n  Spare:\tMethanol\r\n  Name:\t \u00B5 "
      L"tray\r\n\r\n"
      L"  Heights:\t2 values\r\n  Slot:\t9\r\n  Label:\tref\r\n  Slot:\t2\r\n  Label:\tb\r\n  Slot:\t1\r\n"
      L"  Label:\ta\r\n  Mark:\t0.25\r\n  Temperature:\t4\r\n");
}

TEST(RecordFrame, RefusesAVersionThatItDoesNotKnow) {
  const std::string rest = ToBytes(FullTray()).substr(4);
  for (const std::uint32_t version : {0u, 3u, 0xFFFFFFFFu})
    EXPECT_EQ(ReadFailure(Bytes(version) + rest, FullTray()), "Unknown Tray version.");
}

TEST(RecordFrame, RefusesAnUnknownVersionInsideWithTheInnerText) {
  const std::string whole = ToBytes(FullTray());
  std::string garbled = whole;
  garbled[whole.find("ref") - 12] = 9;
  EXPECT_EQ(ReadFailure(garbled, FullTray()), "Unknown Vial version.");
}

TEST(RecordFrame, ReadsAnOlderVersionWithDefaultsForWhatItLacked) {
  std::string old = ToBytes(FullTray());
  old = Bytes(1u) + old.substr(4, old.size() - 12);
  Tray expected = FullTray();
  expected.Pitch = 0.9;
  EXPECT_TRUE(FromBytes<Tray>(old) == expected);
}

TEST(RecordFrame, ANestedRecordDoesNotChangeTheVersionOfTheOuter) {
  Tray tray;
  tray.Temperature = 20.0;
  EXPECT_EQ(FromBytes<Tray>(ToBytes(tray)).Temperature, 20.0);
}

TEST(RecordFrame, RefusesEveryBeginningOfARecord) { CheckCutShort(FullTray()); }

TEST(RecordFrame, ReadsRecordsInARow) {
  std::istringstream in(ToBytes(MakeVial(1, L"a")) + ToBytes(MakeVial(2, L"b")), std::ios::binary);
  BinaryReader reader(in);
  Vial a, b;
  reader >> a >> b;
  EXPECT_TRUE(a == MakeVial(1, L"a") && b == MakeVial(2, L"b"));
}

// 0xFF over any four bytes: refused, or read as another record, but at once and without
// claiming memory for what is not there.
TEST(RecordFrame, GarbageNeitherClaimsMemoryNorLoops) {
  const std::string whole = ToBytes(FullTray());
  int refused = 0;
  for (std::size_t at = 0; at + 4 <= whole.size(); ++at) {
    std::string garbled = whole;
    garbled.replace(at, 4, 4, '\xFF');
    refused += ReadFailure<Tray>(garbled).empty() ? 0 : 1;
  }
  EXPECT_GT(refused, 40);
}

TEST(RecordFrame, AnyBytesAreReadOrRefused) {
  std::uint32_t state = 1;
  int refused = 0;
  for (int i = 0; i < 2000; ++i) {
    std::string garbage = Bytes(2u);
    for (int k = 0; k < 120; ++k) {
      state = state * 1664525 + 1013904223;
      garbage.push_back(static_cast<char>((state >> 24) & (k % 3 == 0 ? 0xFF : 0x03)));
    }
    refused += ReadFailure<Tray>(garbage).empty() ? 0 : 1;
  }
  EXPECT_GT(refused, 1000);
}

TEST(RecordFrame, AnAbsentElementLeavesTheRecordAsItIs) {
  EXPECT_TRUE(FromXml(L"<Other><Rows>5</Rows></Other>", FullTray()) == FullTray());
}

TEST(RecordFrame, AnAbsentChildLeavesItsField) {
  Tray expected = FullTray();
  expected.Rows = 5;
  EXPECT_TRUE(FromXml(L"<Sample_x0020_Tray><Rows>5</Rows></Sample_x0020_Tray>", FullTray()) == expected);
}

Tray TrayWith(const std::wstring& children, Tray tray = Tray()) {
  return FromXml(L"<Sample_x0020_Tray>" + children + L"</Sample_x0020_Tray>", tray);
}

TEST(RecordFrame, TextThatIsNoNumberRaisesNothingAndLeavesTheField) {
  const Tray tray =
      TrayWith(L"<Offset>abc</Offset><Rows></Rows><Pitch>abc</Pitch><Serial>-</Serial><Cooled>?</Cooled>");
  EXPECT_TRUE(tray == Tray());
}

TEST(RecordFrame, KeepsSixDigitsOfADoubleInADocument) {
  Tray tray;
  tray.Pitch = 1.2345678;
  EXPECT_EQ(FromXml<Tray>(ToXml(tray)).Pitch, 1.23457);
}

TEST(RecordFrame, ReadsAnEnumerationInEitherCase) {
  EXPECT_EQ(TrayWith(L"<Rinse>aCETONE</Rinse>").Rinse, Wash::Acetone);
  EXPECT_EQ(TrayWith(L"<Rinse>meoh</Rinse>").Rinse, Wash::Methanol);
}

TEST(RecordFrame, AnotherTextGivesTheFirstValueOfAnEnumeration) {
  EXPECT_EQ(TrayWith(L"<Rinse>Oil</Rinse>").Rinse, Wash::Water);
}

TEST(RecordFrame, AStrictEnumerationComparesCaseAndKeepsItsValue) {
  const auto read = [](const wchar_t* text) {
    return FromXml<Tray>(L"<Sample_x0020_Tray Spare='" + std::wstring(text) + L"'/>").Spare;
  };
  EXPECT_EQ(read(L"Acetone"), Wash::Acetone);
  EXPECT_EQ(read(L"acetone"), Wash::Methanol);
  EXPECT_EQ(read(L"Oil"), Wash::Methanol);
}

TEST(RecordFrame, AValueWithoutATextIsUnknown) {
  Tray tray;
  tray.Rinse = static_cast<Wash>(77);
  EXPECT_NE(ToXml(tray).find(L"<Rinse>Unknown</Rinse>"), std::wstring::npos);
  EXPECT_NE(DumpOf(tray).find(L"  Rinse:\tUnknown\r\n"), std::wstring::npos);
  EXPECT_EQ(FromBytes<Tray>(ToBytes(tray)).Rinse, static_cast<Wash>(77));
}

TEST(RecordFrame, AFlagIsTrueForItsOneTextOnly) {
  EXPECT_TRUE(TrayWith(L"<Lock>LOCKED</Lock>").Locked);
  EXPECT_FALSE(TrayWith(L"<Lock>true</Lock>", FullTray()).Locked);
}

TEST(RecordFrame, ReadsValuesBetweenAnyBlanks) {
  EXPECT_EQ(TrayWith(L"<Heights>\n  1.5\r\n\t2.5  -3e2\n</Heights>").Heights,
            (std::vector<double>{1.5, 2.5, -300.0}));
  EXPECT_TRUE(TrayWith(L"<Heights></Heights>", FullTray()).Heights.empty());
}

TEST(RecordFrame, AListInADocumentReplacesTheItems) {
  EXPECT_EQ(TrayWith(L"<Vials><Vial Slot='5'>x</Vial></Vials>", FullTray()).Vials.size(), 1u);
  EXPECT_EQ(TrayWith(L"<Vials/>", FullTray()).Vials.size(), 0u);
  EXPECT_EQ(TrayWith(L"", FullTray()).Vials.size(), 2u);
}

TEST(RecordFrame, AnItemReadsFromItsDefaults) {
  const Tray tray = TrayWith(L"<Vials><Vial/><Vial Slot='5'/></Vials>", FullTray());
  ASSERT_EQ(tray.Vials.size(), 2u);
  EXPECT_TRUE(tray.Vials[0] == Vial());
  EXPECT_EQ(tray.Vials[1].Slot, 5u);
}

TEST(RecordFrame, ARecordEqualsItselfWhateverItHolds) {
  Tray tray;
  tray.Pitch = kNaN;
  const Tray copy = tray;
  EXPECT_TRUE(tray == tray);
  EXPECT_FALSE(tray == copy);
}

TEST(RecordFrame, ComparesDoublesExactlyUnlessTheRecordSaysOtherwise) {
  Tray a, b;
  b.Pitch = std::nextafter(a.Pitch, 10.0);
  EXPECT_FALSE(a == b);
  b = a;
  b.Depth = a.Depth + 0.5;
  EXPECT_TRUE(a == b);
  b.Depth = a.Depth + 0.50001;
  EXPECT_FALSE(a == b);
}

TEST(RecordFrame, ANearFieldEqualsItsCopyAtInfinity) {
  Tray a;
  a.Depth = kInfinity;
  const Tray b = a;
  EXPECT_TRUE(a == b);
}

TEST(RecordFrame, ListsOfDifferentLengthDiffer) {
  Tray a = FullTray(), b = FullTray();
  b.Vials.pop_back();
  EXPECT_FALSE(a == b);
  EXPECT_FALSE(b == a);
}

struct Scrap : SerialRecord<Scrap> {
  std::uint32_t Kind = 0;
  double Extra = 1.0;
};
// Whether there is an Extra depends on the kind.
void Describe(Archive& ar, Scrap& s) {
  ar.Version(1, "Unknown Scrap version.");
  ar(L"Kind", s.Kind);
  if (s.Kind == 1) ar(L"Extra", s.Extra);
}

TEST(RecordFrame, ComparesOnlyTheFieldsThatARecordHas) {
  Scrap a, b;
  b.Extra = 2.0;
  EXPECT_TRUE(a == b);
  a.Kind = b.Kind = 1;
  EXPECT_FALSE(a == b);
}

struct Weight final : ITslSerial {
  std::uint32_t Value = 5;
  using ITslSerial::Serialize;
  void Serialize(BinaryReader& reader) override { reader >> Value; }
  void Serialize(BinaryWriter& writer) const override { writer << Value; }
  void Serialize(std::wstring& text) const override { text = L"  Weight:\t5\r\n"; }
  bool operator==(const Weight& other) const { return Value == other.Value; }
};
struct Crate : Record<Crate> {
  Weight Content;
};
void Describe(Archive& ar, Crate& c) {
  ar.Version(1, "Unknown Crate version.");
  ar.Nested(c.Content);
}

TEST(RecordFrame, CarriesARecordThatWritesAndReadsItself) {
  Crate crate;
  crate.Content.Value = 77;
  EXPECT_EQ(ToBytes(crate), Bytes(1u, 77u));
  EXPECT_TRUE(FromBytes<Crate>(ToBytes(crate)) == crate);
  EXPECT_FALSE(crate == Crate());
  EXPECT_EQ(DumpOf(crate), L"  Weight:\t5\r\n");
}

TEST(RecordFrame, SaysThatARecordHasNoDocumentForm) { EXPECT_THROW(ToXml(Crate()), std::logic_error); }

}  // namespace
