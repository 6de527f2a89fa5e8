#include <RecordCheck.h>

#include <tslbl/chromatogram/ICFilter.h>
#include <locale>

using namespace TslBL;
using namespace tests;

namespace {

using Ids = std::vector<std::uint32_t>;

ICFilter SampleICFilter() { return {{ICRange::SpecId, 3, 90}, {1, 4294967295u, 0}}; }

Ids IdsOf(const std::wstring& text) {
  return FromXml<ICFilter>(L"<ICFilter><TuneIds>" + text + L"</TuneIds></ICFilter>").TuneIds;
}

}  // namespace

TEST(AllRecords, ICFilter) {
  CheckRecord<ICFilter>({
      {"Range",
       [](auto& r) {
         r.Range = {ICRange::Time, 1, 2};
       }},
      {"TuneIds", [](auto& r) { r.TuneIds = {1}; }},
      {"TuneIds.id", [](auto& r) { r.TuneIds[0] = 2; }},
  });
}
TEST(Golden, ICFilter) { CheckGolden(SampleICFilter(), "ICFilter.v1"); }
TEST(CutShort, ICFilter) { CheckCutShort(SampleICFilter()); }

TEST(ICFilter, IsTheWholeRunOfNoTuneByDefault) { EXPECT_EQ(ICFilter(), ICFilter(ICRange(), {})); }

TEST(ICFilter, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<ICFilter>(Bytes(version) + ToBytes(ICRange()) + Bytes(0u)),
              "Unknown ICFilter version.");
  EXPECT_EQ(ReadFailure<ICFilter>(Bytes(1u, 2u, 0u, 0u, 0u, 0u)), "Unknown ICRange version.");
}

TEST(ICFilter, HasItsIdsBetweenBlanksInXml) {
  EXPECT_EQ(ToXml(SampleICFilter()),
            L"<ICFilter>\n"
            L"  <ICRange Type=\"SpecId\" Start=\"3\" End=\"90\" />\n"
            L"  <TuneIds>1 4294967295 0</TuneIds>\n"
            L"</ICFilter>\n");
}

TEST(ICFilter, ReadsIdsUntilThereIsNone) {
  EXPECT_EQ(IdsOf(L"1 2 3"), (Ids{1, 2, 3}));
  EXPECT_EQ(IdsOf(L"  7\n\t8 "), (Ids{7, 8}));
  EXPECT_EQ(IdsOf(L""), Ids());
  EXPECT_EQ(IdsOf(L"5 x 6"), Ids{5});
  EXPECT_EQ(IdsOf(L"5,6"), Ids{5});
  EXPECT_EQ(IdsOf(L"5 4294967296 6"), Ids{5});
}

TEST(ICFilter, KeepsIdsThatTheDocumentLacks) {
  EXPECT_EQ(FromXml<ICFilter>(L"<ICFilter />", SampleICFilter()), SampleICFilter());
  EXPECT_EQ(FromXml<ICFilter>(L"<Other />", SampleICFilter()), SampleICFilter());
}

TEST(ICFilter, ComparesItsIdsInOrder) {
  EXPECT_NE(ICFilter({}, {1, 2}), ICFilter({}, {2, 1}));
  EXPECT_NE(ICFilter({}, {1}), ICFilter({}, {1, 1}));
}

TEST(ICFilter, Dumps) {
  EXPECT_EQ(DumpOf(SampleICFilter()).substr(DumpOf(ICRange(ICRange::SpecId, 3, 90)).size()),
            L"  TuneIds:\t1 4294967295 0\r\n");
}
