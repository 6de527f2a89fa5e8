#include <RecordCheck.h>

#include <tslbl/records/CSSeries.h>

using namespace TslBL;
using namespace tests;

namespace {

CSSeries SampleCSSeries() { return {CSSeries::Unresolved, 703}; }

}  // namespace

TEST(AllRecords, CSSeries) {
  CheckRecord<CSSeries>({
      {"Type", [](auto& r) { r.Type = CSSeries::Resolved; }},
      {"Id", [](auto& r) { r.Id = 2; }},
  });
}
TEST(Golden, CSSeries) { CheckGolden(SampleCSSeries(), "CSSeries.v1"); }
TEST(CutShort, CSSeries) { CheckCutShort(SampleCSSeries()); }

TEST(CSSeries, IsNoSeriesByDefault) { EXPECT_EQ(CSSeries(), CSSeries(static_cast<CSSeries::Types>(0), 0)); }

TEST(CSSeries, NumbersOfItsTypesStandInStreams) {
  EXPECT_EQ(CSSeries::Resolved, 1u);
  EXPECT_EQ(CSSeries::Unresolved, 2u);
}

TEST(CSSeries, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<CSSeries>(Bytes(version, 1u, 1u), SampleCSSeries()), "Unknown CSSeries version.");
}

TEST(CSSeries, Dumps) { EXPECT_EQ(DumpOf(SampleCSSeries()), L"  Type:\tUnresolved\r\n  Id:\t703\r\n"); }
