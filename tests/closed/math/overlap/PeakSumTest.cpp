// Tests: PeakSum.cpp, TermOrder.h.
#include <tslbl/closed/math/overlap/PeakSum.h>

#include <gtest/gtest.h>

#include <tslbl/closed/math/overlap/TermOrder.h>
#include <cmath>
#include <numbers>

using namespace TslMath;

namespace {

constexpr double kStep = 0.001;

PeakSum OnePeak(double skew) {
  PeakSum sum;
  sum.heights = {10};
  sum.tops = {3};
  sum.widths = {2};
  sum.skew = skew;
  return sum;
}

TEST(PeakSum, IsTheSumOverTheBaseline) {
  PeakSum sum;
  sum.heights = {1, 4};
  sum.tops = {0, 2};
  sum.widths = {1, 2};
  sum.baseline = 7;
  EXPECT_DOUBLE_EQ(sum.At(0), 7 + 1 + 4 * std::exp(-0.5));
}

// Integrals by the trapezoidal rule, which has no error worth mentioning here.
TEST(PeakSum, HasAreaAndCentroidOfItsIntegrals) {
  for (const double skew : {0.0, 0.2, -0.3}) {
    const PeakSum sum = OnePeak(skew);
    double area = 0;
    double moment = 0;
    for (double x = -30; x < 40; x += kStep) {
      area += kStep * sum.At(x);
      moment += kStep * x * sum.At(x);
    }
    EXPECT_NEAR(area, sum.Area(0), 1e-5 * area);
    EXPECT_NEAR(moment / area, sum.Centroid(0), 1e-5);
  }
}

TEST(PeakSum, HasTheSameWidthAtHalfHeightWhateverTheSkew) {
  for (const double skew : {0.0, 0.2, -0.3}) {
    const PeakSum sum = OnePeak(skew);
    const double half = 2 * std::sqrt(2 * std::numbers::ln2);
    EXPECT_NEAR(sum.At(3 - half * (1 - skew)), 5, 1e-12);
    EXPECT_NEAR(sum.At(3 + half * (1 + skew)), 5, 1e-12);
  }
}

TEST(PeakSum, PutsTopsInOrder) {
  PeakSum sum;
  sum.tops = {5, 1, 3};
  EXPECT_EQ(OrderOfTops(sum), (std::vector<std::size_t>{1, 2, 0}));
}

TEST(TermOrder, GivesEachFreeNumberAPlaceOfItsOwn) {
  const TermOrder own(2, {true, FreeTerms::Widths::Own, true, true});
  EXPECT_EQ(own.Count(), 8u);
  EXPECT_EQ(own.Top(1), 3u);
  EXPECT_EQ(own.Width(1), 5u);
  EXPECT_EQ(own.Skew(), 6u);
  EXPECT_EQ(own.Baseline(), 7u);
}

TEST(TermOrder, LeavesNoPlaceForWhatIsKept) {
  EXPECT_EQ(TermOrder(3, {false, FreeTerms::Widths::Kept, false, false}).Count(), 3u);
  EXPECT_EQ(TermOrder(3, {false, FreeTerms::Widths::Kept, false, true}).Baseline(), 3u);
  EXPECT_EQ(TermOrder(3, {}).Count(), 8u);
  EXPECT_EQ(TermOrder(3, {}).Width(0), TermOrder(3, {}).Width(2));
}

}  // namespace
