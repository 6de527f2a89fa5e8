#include <tslbl/chargestate/AdductIonInfo.h>

#include <RecordCheck.h>
#include <chargestate/SampleParams.h>

using namespace tests;

TEST(AllRecords, AdductIonInfo) {
  CheckRecord<AdductIonInfo>({
      {"Symbol", [](auto& r) { r.Symbol = L"Li+"; }},
      {"MonoMass", [](auto& r) { r.MonoMass = 7.5; }},
      {"AvgMass", [](auto& r) { r.AvgMass = 7.25; }},
  });
}
TEST(Golden, AdductIonInfo) { CheckGolden(SampleAdductIon(), "AdductIonInfo.v1"); }
TEST(CutShort, AdductIonInfo) { CheckCutShort(SampleAdductIon()); }

TEST(AdductIonInfo, IsEmptyByDefault) {
  EXPECT_EQ(AdductIonInfo().Symbol, L"");
  EXPECT_EQ(AdductIonInfo().MonoMass, 0.0);
  EXPECT_EQ(AdductIonInfo().AvgMass, 0.0);
}

TEST(AdductIonInfo, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<AdductIonInfo>(Bytes(version), SampleAdductIon()),
              "Unknown AdductIonInfo version.");
}

TEST(AdductIonInfo, WritesXml) {
  EXPECT_EQ(ToXml(AdductIonInfo(L"Li+", 7.5, 6.9385)),
            L"<CustomAdductIon>\n"
            L"  <Symbol>Li+</Symbol>\n"
            L"  <MonoMass>7.5</MonoMass>\n"
            L"  <AvgMass>6.9385</AvgMass>\n"
            L"</CustomAdductIon>\n");
}

TEST(AdductIonInfo, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<AdductIonInfo>(L"<CustomAdductIon/>", SampleAdductIon()), SampleAdductIon());
  EXPECT_EQ(FromXml<AdductIonInfo>(L"<Other/>", SampleAdductIon()), SampleAdductIon());
}

TEST(AdductIonInfo, DumpsItsFields) {
  EXPECT_EQ(DumpOf(AdductIonInfo(L"Li+", 7.5, 6.9385)),
            L"  Symbol:\tLi+\r\n  MonoMass:\t7.5\r\n  AvgMass:\t6.9385\r\n");
}

TEST(StandardAdductIon, HasItsMasses) {
  const auto ion = [](std::uint32_t index) {
    return AdductIonInfo::GetStandardAdductIon(static_cast<AdductIonInfo::AdductIon>(index));
  };
  EXPECT_EQ(ion(0), AdductIonInfo(L"H+", 1.007276, 1.007398));
  EXPECT_EQ(ion(1), AdductIonInfo(L"NH4+", 18.033826, 18.037986));
  EXPECT_EQ(ion(2), AdductIonInfo(L"Na+", 22.989221, 22.989221));
  EXPECT_EQ(ion(3), AdductIonInfo(L"K+", 38.963158, 39.09776));
}

TEST(StandardAdductIon, IsTheProtonFromIndex4On) {
  for (const std::uint32_t index : {4u, 5u, 0xFFFFFFFFu})
    EXPECT_EQ(AdductIonInfo::GetStandardAdductIon(static_cast<AdductIonInfo::AdductIon>(index)),
              AdductIonInfo(L"H+", 1.007276, 1.007398));
}
