#include <tslbl/tune/Q1CalPt.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

using Fields = std::map<TuneField::Id, double>;

Q1CalPt With(const Fields& fields) {
  Q1CalPt point(100, L"P");
  point.Fields = fields;
  return point;
}

TEST(AllRecords, Q1CalPt) {
  CheckRecord<Q1CalPt>({
      {"Name", [](auto& r) { r.Name = L"name"; }},
      {"MZ", [](auto& r) { r.MZ = 1; }},
      {"Fields", [](auto& r) { r.Fields[TuneField::Q1CoarseResolution] = 2; }},
      {"Fields.value", [](auto& r) { r.Fields[TuneField::Q1CoarseResolution] = 3; }},
      {"Fields.field",
       [](auto& r) {
         r.Fields = {{TuneField::CapExit, 2}};
       }},
  });
}

TEST(Golden, Q1CalPt) { CheckGolden(SampleQ1CalPt(), "Q1CalPt.v1"); }
TEST(Q1CalPt, CutShortIsRefused) { CheckCutShort(SampleQ1CalPt()); }

TEST(Q1CalPt, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<Q1CalPt>(Bytes(version), SampleQ1CalPt()), "Unknown Q1CalPt version.");
}

TEST(Q1CalPt, WithACountBeyondTheStreamIsRefused) {
  const std::string bytes = Bytes(1u, std::wstring(L"x"), 1.0, 4294967295u, 22u, 5.0);
  EXPECT_EQ(ReadFailure<Q1CalPt>(bytes), "Unexpected end of stream.");
}

TEST(Q1CalPt, OfTwoStoredEntriesOfAFieldKeepsTheLast) {
  const std::string bytes = Bytes(1u, std::wstring(L"P"), 100.0, 2u, 22u, 5.0, 22u, 6.0);
  EXPECT_EQ(FromBytes<Q1CalPt>(bytes), With({{TuneField::CapExit, 6.0}}));
}

TEST(Q1CalPt, IsAnElementWithAListOfFields) {
  EXPECT_EQ(ToXml(SampleQ1CalPt()),
            L"<Q1Cal Name=\"Low\" MZ=\"118.5\">\n"
            L"  <IOPtFlds>\n"
            L"    <IOPtFld Name=\"CapExit\">120</IOPtFld>\n"
            L"    <IOPtFld Name=\"Skimmer\">17.5</IOPtFld>\n"
            L"    <IOPtFld Name=\"Q1IonGuide\">-9.25</IOPtFld>\n"
            L"  </IOPtFlds>\n"
            L"</Q1Cal>\n");
}

TEST(Q1CalPt, AFieldWithoutATagIsUnknown) {
  EXPECT_NE(ToXml(With({{TuneField::Q1Enter, 3}})).find(L"<IOPtFld Name=\"Unknown\">3</IOPtFld>"),
            std::wstring::npos);
}

TEST(Q1CalPt, ATagWithoutAFieldReadsAsFieldNull) {
  for (const wchar_t* name : {L" Name=\"capexit\"", L" Name=\"Unknown\"", L""}) {
    const auto xml = std::wstring(L"<Q1Cal><IOPtFlds><IOPtFld") + name + L">4</IOPtFld></IOPtFlds></Q1Cal>";
    EXPECT_EQ(FromXml<Q1CalPt>(xml).Fields, (Fields{{TuneField::SourceType, 4.0}})) << name;
  }
}

TEST(Q1CalPt, IsReadWithoutTheFieldsThatItHad) {
  EXPECT_EQ(FromXml(L"<Q1Cal MZ=\"7\"/>", SampleQ1CalPt()).Fields, Fields());
  EXPECT_EQ(FromXml(L"<Other/>", SampleQ1CalPt()), SampleQ1CalPt());
}

TEST(Q1CalPt, AnElementOfAnotherNameIsNoField) {
  const Q1CalPt read =
      FromXml<Q1CalPt>(L"<Q1Cal><IOPtFlds><Note/><IOPtFld Name=\"Skimmer\">1</IOPtFld></IOPtFlds></Q1Cal>");
  EXPECT_EQ(read.Fields, (Fields{{TuneField::Skimmer, 1.0}}));
}

TEST(Q1CalPt, ComparesMzWithinATolerance) {
  EXPECT_TRUE(Q1CalPt(0.0, L"P") == Q1CalPt(1e-6, L"P"));
  EXPECT_FALSE(Q1CalPt(0.0, L"P") == Q1CalPt(1.1e-6, L"P"));
}

TEST(Q1CalPt, ComparesFieldsExactly) {
  const Q1CalPt point = With({{TuneField::CapExit, 1.0}});
  EXPECT_FALSE(point == With({{TuneField::CapExit, 1.0 + 1e-15}}));
  EXPECT_FALSE(point == With({{TuneField::Skimmer, 1.0}}));
  EXPECT_FALSE(point == With({{TuneField::CapExit, 1.0}, {TuneField::Skimmer, 1.0}}));
  EXPECT_FALSE(point == With({}));
}

TEST(Q1CalPt, KeepsOnlyItsCapillaryExit) {
  Q1CalPt point = SampleQ1CalPt();
  point.KeepOnlyCapExit();
  EXPECT_EQ(point.Fields, (Fields{{TuneField::CapExit, 120.0}}));
}

TEST(Q1CalPt, WithoutACapillaryExitKeepsNothing) {
  Q1CalPt point = With({{TuneField::Skimmer, 1.0}});
  point.KeepOnlyCapExit();
  EXPECT_EQ(point.Fields, Fields());
}

TEST(Q1CalPt, ReplacesACapillaryExitAndAddsNone) {
  Q1CalPt with = With({{TuneField::CapExit, 1.0}});
  with.ReplaceAnyCapExit(7.0);
  EXPECT_EQ(with.Fields, (Fields{{TuneField::CapExit, 7.0}}));
  Q1CalPt without = With({{TuneField::Skimmer, 1.0}});
  without.ReplaceAnyCapExit(7.0);
  EXPECT_EQ(without.Fields, (Fields{{TuneField::Skimmer, 1.0}}));
}

TEST(Q1CalPt, DumpNamesItsFields) {
  EXPECT_EQ(
      DumpOf(SampleQ1CalPt()),
      L"  Name:\tLow\r\n  MZ:\t118.5\r\n  CapExit:\t120\r\n  Skimmer:\t17.5\r\n  Q1IonGuide:\t-9.25\r\n");
}

}  // namespace
