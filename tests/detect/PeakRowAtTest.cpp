#include <detect/PeakCurves.h>
#include <tslbl/detect/PeakRowAt.h>

using namespace TslBL;
using namespace tests;

namespace {

TestCurve ThreePeaks() { return PeakCurve(Values("0 2 4 2 0 0 5 9 5 0 0 3 6 3 0")); }

}  // namespace

TEST(PeakRowAt, ElsewhereAddsThePeak) {
  TestCurve curve = ThreePeaks();
  EXPECT_EQ(PeakRowAt(curve, 12), 0);
  EXPECT_EQ(PeakRowAt(curve, 7), 0);
  EXPECT_EQ(Spans(curve.peaks), "5-7-9 10-12-14");
}

TEST(PeakRowAt, InAKnownPeakIsItsRow) {
  TestCurve curve = ThreePeaks();
  ASSERT_EQ(PeakRowAt(curve, 7), 0);
  ASSERT_EQ(PeakRowAt(curve, 12), 1);
  const TestCurve before = curve;
  for (const std::uint32_t point : {5u, 7u, 9u}) EXPECT_EQ(PeakRowAt(curve, point), 0);
  for (const std::uint32_t point : {10u, 12u, 14u}) EXPECT_EQ(PeakRowAt(curve, point), 1);
  EXPECT_TRUE(curve == before);
}

TEST(PeakRowAt, WhereThereIsNoneIsBelowZero) {
  TestCurve curve = PeakCurve(std::vector<double>(15, 1.0));
  EXPECT_LT(PeakRowAt(curve, 7), 0);
}
