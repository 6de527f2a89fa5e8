#include <tslbl/chargestate/UnresolvedParams.h>

#include <RecordCheck.h>
#include <chargestate/LimitsOf.h>
#include <chargestate/SampleParams.h>

using namespace tests;

namespace {

using Integers = std::pair<std::uint32_t, std::uint32_t>;

}  // namespace

TEST(AllRecords, UnresolvedParams) {
  CheckRecord<UnresolvedParams>({
      {"MinCS", [](auto& r) { r.MinCS = 1; }},
      {"MzAccuracy", [](auto& r) { r.MzAccuracy = 1; }},
      {"MinDeconMass", [](auto& r) { r.MinDeconMass = 1; }},
      {"MaxDeconMass", [](auto& r) { r.MaxDeconMass = 1; }},
  });
}
TEST(Golden, UnresolvedParams) { CheckGolden(SampleUnresolved(), "UnresolvedParams.v1"); }
TEST(CutShort, UnresolvedParams) { CheckCutShort(SampleUnresolved()); }

TEST(UnresolvedParams, HasItsDefaults) {
  const UnresolvedParams p;
  EXPECT_EQ(p.MinCS, 5u);
  EXPECT_EQ(p.MzAccuracy, 1000u);
  EXPECT_EQ(p.MinDeconMass, 1000u);
  EXPECT_EQ(p.MaxDeconMass, 20000u);
}

TEST(UnresolvedParams, HasLimitsForForms) {
  EXPECT_EQ(LimitsOf(UnresolvedParams::GetMinChargeStateLimits), Integers(2, 10));
  EXPECT_EQ(LimitsOf(UnresolvedParams::GetMZAccurayLimits), Integers(1, 10000));
  EXPECT_EQ(LimitsOf(UnresolvedParams::GetDeconMassLimits), Integers(100, 500000));
}

TEST(UnresolvedParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<UnresolvedParams>(Bytes(version), SampleUnresolved()),
              "Unknown Unresolved version.");
}

TEST(UnresolvedParams, WritesXml) {
  EXPECT_EQ(ToXml(SampleUnresolved()),
            L"<Unresolved>\n"
            L"  <MinCS>6</MinCS>\n"
            L"  <MzAccuracy>1007</MzAccuracy>\n"
            L"  <MinDeconMass>1008</MinDeconMass>\n"
            L"  <MaxDeconMass>50009</MaxDeconMass>\n"
            L"</Unresolved>\n");
}

TEST(UnresolvedParams, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<UnresolvedParams>(L"<Unresolved/>", SampleUnresolved()), SampleUnresolved());
  EXPECT_EQ(FromXml<UnresolvedParams>(L"<Other/>", SampleUnresolved()), SampleUnresolved());
}

TEST(UnresolvedParams, DumpsItsFields) {
  EXPECT_EQ(DumpOf(SampleUnresolved()),
            L"  MinCS:\t6\r\n  MzAccuracy:\t1007\r\n  MinDeconMass:\t1008\r\n  MaxDeconMass:\t50009\r\n");
}
