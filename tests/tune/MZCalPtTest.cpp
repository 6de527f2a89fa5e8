#include <tslbl/tune/MZCalPt.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

MZCalPt Sample() { return {L"Low", 118.0863, 2361.726}; }

TEST(AllRecords, MZCalPt) {
  CheckRecord<MZCalPt>({
      {"Name", [](auto& r) { r.Name = L"name"; }},
      {"MZ", [](auto& r) { r.MZ = 1; }},
      {"MassDAC", [](auto& r) { r.MassDAC = 2; }},
  });
}

TEST(Golden, MZCalPt) { CheckGolden(Sample(), "MZCalPt.v1"); }
TEST(MZCalPt, CutShortIsRefused) { CheckCutShort(Sample()); }

TEST(MZCalPt, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<MZCalPt>(Bytes(version), Sample()), "Unknown MZCalPt version.");
}

TEST(MZCalPt, IsAnElementOfAttributes) {
  EXPECT_EQ(ToXml(Sample()), L"<MZCal Name=\"Low\" MZ=\"118.086\" MassDAC=\"2361.73\" />\n");
}

TEST(MZCalPt, ComparesNumbersWithinATolerance) {
  const MZCalPt point(L"", 0.0, 0.0);
  EXPECT_TRUE(point == MZCalPt(L"", 1e-6, -1e-6));
  EXPECT_FALSE(point == MZCalPt(L"", 1.1e-6, 0.0));
  EXPECT_FALSE(point == MZCalPt(L"", 0.0, -1.1e-6));
}

TEST(MZCalPt, ComparesNamesExactly) { EXPECT_FALSE(MZCalPt(L"a", 1, 2) == MZCalPt(L"A", 1, 2)); }

TEST(MZCalPt, IsOrderedByMzAlone) {
  EXPECT_TRUE(MZCalPt(L"b", 1, 9) < MZCalPt(L"a", 2, 8));
  EXPECT_FALSE(MZCalPt(L"a", 2, 8) < MZCalPt(L"b", 2, 9));
}

}  // namespace
