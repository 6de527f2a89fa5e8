#include <tslbl/method/DDFilter.h>

#include "RecordCheck.h"
#include "method/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, DDFilter) {
  CheckRecord<DDFilter>({
      {"MZStart", [](auto& r) { r.MZStart = 1.5; }},
      {"MZEnd", [](auto& r) { r.MZEnd = 1.5; }},
      {"TimeStart", [](auto& r) { r.TimeStart = 4294967295; }},
      {"TimeEnd", [](auto& r) { r.TimeEnd = 4294967295; }},
  });
}

TEST(Golden, DDFilter) { CheckGolden(SampleDDFilter(), "DDFilter.v1"); }
TEST(DDFilter, CutShortIsRefused) { CheckCutShort(SampleDDFilter()); }

TEST(DDFilter, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<DDFilter>(Bytes(version), SampleDDFilter()), "Unknown DDFilter version.");
}

TEST(DDFilter, IsAnElementOfAttributes) {
  EXPECT_EQ(ToXml(SampleDDFilter()),
            L"<DDFilter MZStart=\"499.5\" MZEnd=\"500.25\" TimeStart=\"1000\" TimeEnd=\"4294967295\" />\n");
}

TEST(DDFilter, KeepsWhatTheDocumentLacks) {
  DDFilter expected = SampleDDFilter();
  expected.TimeEnd = 7;
  EXPECT_EQ(FromXml(L"<DDFilter TimeEnd=\"7\" />", SampleDDFilter()), expected);
}

TEST(DDFilter, HasNoDump) { EXPECT_EQ(DumpOf(SampleDDFilter()), L""); }

}  // namespace
