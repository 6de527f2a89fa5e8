#include <tslbl/chargestate/AvgMoleculeInfo.h>

#include <RecordCheck.h>
#include <chargestate/SampleParams.h>

using namespace tests;

TEST(AllRecords, AvgMoleculeInfo) {
  CheckRecord<AvgMoleculeInfo>({
      {"Name", [](auto& r) { r.Name = L"Sugar"; }},
      {"Formula", [](auto& r) { r.Formula = L"C6 H10 O5"; }},
  });
}
TEST(Golden, AvgMoleculeInfo) { CheckGolden(SampleAvgMolecule(), "AvgMoleculeInfo.v1"); }
TEST(CutShort, AvgMoleculeInfo) { CheckCutShort(SampleAvgMolecule()); }

TEST(AvgMoleculeInfo, IsEmptyByDefault) {
  EXPECT_EQ(AvgMoleculeInfo().Name, L"");
  EXPECT_EQ(AvgMoleculeInfo().Formula, L"");
}

TEST(AvgMoleculeInfo, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<AvgMoleculeInfo>(Bytes(version), SampleAvgMolecule()),
              "Unknown AvgMoleculeInfo version.");
}

TEST(AvgMoleculeInfo, WritesXml) {
  EXPECT_EQ(ToXml(SampleAvgMolecule()),
            L"<CustomAvgMole>\n"
            L"  <Name>Sugar</Name>\n"
            L"  <Formula>C6 H10 O5</Formula>\n"
            L"</CustomAvgMole>\n");
}

TEST(AvgMoleculeInfo, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<AvgMoleculeInfo>(L"<CustomAvgMole/>", SampleAvgMolecule()), SampleAvgMolecule());
  EXPECT_EQ(FromXml<AvgMoleculeInfo>(L"<Other/>", SampleAvgMolecule()), SampleAvgMolecule());
}

TEST(AvgMoleculeInfo, DumpsItsFields) {
  EXPECT_EQ(DumpOf(SampleAvgMolecule()), L"  Name:\tSugar\r\n  Formula:\tC6 H10 O5\r\n");
}

TEST(StandardAvgMolecule, HasItsFormula) {
  const auto molecule = [](std::uint32_t index) {
    return AvgMoleculeInfo::GetStandardAvgMolecule(static_cast<AvgMoleculeInfo::AvgMolecule>(index));
  };
  EXPECT_EQ(molecule(0), AvgMoleculeInfo(L"Averagine", L"C117 H184 N32 O35 S1"));
  EXPECT_EQ(molecule(1), AvgMoleculeInfo(L"DNA-gine", L"C39 H50 N15 O22 P3"));
  EXPECT_EQ(molecule(2), AvgMoleculeInfo(L"RNA-gine", L"C38 H48 N15 O26 P03"));
}

TEST(StandardAvgMolecule, IsAveragineFromIndex3On) {
  for (const std::uint32_t index : {3u, 4u, 0xFFFFFFFFu})
    EXPECT_EQ(AvgMoleculeInfo::GetStandardAvgMolecule(static_cast<AvgMoleculeInfo::AvgMolecule>(index)),
              AvgMoleculeInfo(L"Averagine", L"C117 H184 N32 O35 S1"));
}
