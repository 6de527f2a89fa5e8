// Tests: MassPlot.cpp, MassProfile.cpp.
#include <tslbl/closed/math/chargestate/MassPlot.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "SimulatedSeries.h"

using namespace TslMath;
using namespace tests;

namespace {

struct Points {
  std::vector<double> mz;
  std::vector<double> amplitude;

  ChargedProfile At(std::int32_t charge) const { return {mz, amplitude, kProton, charge}; }
};

// Counts of a peak of this mass, 0.25 m/z wide as a standard deviation, between zeros.
Points CountedPeak(double mass, std::int32_t charge, Random& random, double step = 0.05) {
  Points points;
  const double centre = mass / charge + kProton;
  for (double mz = std::round((centre - 1.5) / step) * step; mz < centre + 1.5; mz += step) {
    const double u = (mz - centre) / 0.25;
    points.mz.push_back(mz);
    points.amplitude.push_back(std::poisson_distribution<int>(500 * std::exp(-0.5 * u * u) + 1e-9)(random));
  }
  points.amplitude.front() = points.amplitude.back() = 0;
  return points;
}

struct Moments {
  double area = 0;
  double first = 0;  // about `centre`

  double Centroid(double centre) const { return centre + first / area; }
};

// Of the straight lines between the points.
Moments MomentsOf(const std::vector<double>& x, const std::vector<double>& y, double centre) {
  Moments sum;
  for (std::size_t i = 1; i < x.size(); ++i) {
    const double h = x[i] - x[i - 1];
    const double left = x[i - 1] - centre;
    const double right = x[i] - centre;
    sum.area += h * (y[i - 1] + y[i]) / 2;
    sum.first += h * (left * (2 * y[i - 1] + y[i]) + right * (y[i - 1] + 2 * y[i])) / 6;
  }
  return sum;
}

Moments MomentsOf(const MassCurve& curve, double centre) {
  return MomentsOf(curve.mass, curve.density, centre);
}

// Moments that a peak must have over mass.
Moments Expected(const Points& points, std::int32_t charge, double mass) {
  const double centre = mass / charge + kProton;
  Moments sum = MomentsOf(points.mz, points.amplitude, centre);
  sum.first *= charge;
  return sum;
}

TEST(SumOfPeaks, KeepsAreaAndCentroid) {
  Random random(2);
  for (const auto& [mass, from, to] :
       {std::tuple{16951.5, 12, 23}, {29023.7, 20, 39}, {801000.0, 60, 70}, {1500.2, 1, 2}}) {
    std::vector<Points> points;
    std::vector<ChargedProfile> peaks;
    Moments expected;
    for (int charge = from; charge <= to; ++charge) points.push_back(CountedPeak(mass, charge, random));
    for (int charge = from; charge <= to; ++charge) {
      const Points& peak = points[static_cast<std::size_t>(charge - from)];
      peaks.push_back(peak.At(charge));
      const Moments one = Expected(peak, charge, mass);
      expected.area += one.area;
      expected.first += one.first;
    }
    const Moments found = MomentsOf(SumOfPeaks(peaks), mass);
    EXPECT_NEAR(found.area / expected.area, 1, 1e-9) << mass;
    EXPECT_NEAR(found.Centroid(mass), expected.Centroid(mass), 1e-6) << mass;
  }
}

TEST(SumOfPeaks, IsChargeTimesAsWideAsThePeak) {
  Points points;
  for (double mz = 998; mz <= 1002; mz += 0.05) {
    points.mz.push_back(mz);
    points.amplitude.push_back(1000 * std::exp(-0.5 * (mz - 1000) * (mz - 1000) / 0.0625));
  }
  const MassCurve curve = SumOfPeaks(std::vector{points.At(10)});
  const auto top = std::ranges::max_element(curve.density);
  EXPECT_NEAR(*top, 100, 1);
  const auto isUpper = [&](double value) { return value > *top / 2; };
  const auto count = std::ranges::count_if(curve.density, isUpper);
  const auto step = curve.mass[1] - curve.mass[0];
  EXPECT_NEAR(static_cast<double>(count) * step, 10 * 0.25 * 2.3548, step);
}

TEST(SumOfPeaks, StandsOnMultiplesOfAPowerOfTwo) {
  Random random(3);
  const Points twelve = CountedPeak(16951.5, 12, random);
  const Points ten = CountedPeak(16951.5, 10, random);
  const MassCurve curve = SumOfPeaks(std::vector{twelve.At(12), ten.At(10)});
  for (std::size_t k = 0; k < curve.mass.size(); ++k)
    ASSERT_EQ(curve.mass[k], curve.mass[0] + 0.5 * static_cast<double>(k));
  EXPECT_EQ(std::fmod(curve.mass[0], 0.5), 0);
  EXPECT_EQ(curve.density.front(), 0);
  EXPECT_EQ(curve.density.back(), 0);
}

TEST(SumOfPeaks, LeavesNoTraceFarFromItsPeaks) {
  Random random(3);
  const Points here = CountedPeak(10000, 10, random);
  const Points there = CountedPeak(12000, 10, random);
  const MassCurve curve = SumOfPeaks(std::vector{here.At(10), there.At(10)});
  for (std::size_t k = 0; k < curve.mass.size(); ++k) {
    const bool isFar = curve.mass[k] > 10020 && curve.mass[k] < 11980;
    ASSERT_TRUE(!isFar || curve.density[k] == 0);
  }
}

TEST(SumOfPeaks, OrdersPointsAndTakesTheMeanOfThoseAtOnePlace) {
  const Points plain{{1000, 1000.1, 1000.2}, {0, 6, 0}};
  const Points mixed{{1000.2, 1000.1, 1000, 1000.1}, {0, 8, 0, 4}};
  const MassCurve a = SumOfPeaks(std::vector{plain.At(3)});
  const MassCurve b = SumOfPeaks(std::vector{mixed.At(3)});
  EXPECT_EQ(a.mass, b.mass);
  EXPECT_EQ(a.density, b.density);
}

TEST(SumOfPeaks, LeavesOutWhatIsNoPeak) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const Points good{{1000, 1000.1, 1000.2}, {0, 6, 0}};
  const Points bad[] = {{{}, {}},
                        {{1000}, {5}},
                        {{1000, 1000}, {5, 6}},
                        {{1000, 1001}, {5}},
                        {{1000, kNaN}, {5, 6}},
                        {{1000, kInfinity}, {5, 6}},
                        {{1000, 1e300}, {5, 6}},
                        {{1000, 1001}, {5, kNaN}}};
  for (const Points& points : bad) EXPECT_TRUE(SumOfPeaks(std::vector{points.At(2)}).mass.empty());
  EXPECT_TRUE(SumOfPeaks(std::vector{good.At(0)}).mass.empty());
  EXPECT_TRUE(SumOfPeaks({}).mass.empty());
  EXPECT_EQ(SumOfPeaks(std::vector{good.At(2), bad[4].At(2)}).density,
            SumOfPeaks(std::vector{good.At(2)}).density);
}

TEST(SumOfPeaks, StaysWithinItsMemory) {
  const Points narrow{{500, 500.000001, 500.000002}, {0, 6, 0}};
  const Points far{{1e9, 1e9 + 1}, {5, 5}};
  const MassCurve curve = SumOfPeaks(std::vector{narrow.At(1), far.At(100)});
  EXPECT_LE(curve.mass.size(), 70000U);
  EXPECT_TRUE(std::ranges::is_sorted(curve.mass));
}

// Triangles of a list whose peaks crowd are as narrow as their neighbours leave room.
TEST(SumOfPeaks, StepsNoFinerThanAnyInstrumentTells) {
  const Points narrow{{500, 500.00001, 500.00002}, {0, 6, 0}};
  const MassCurve curve = SumOfPeaks(std::vector{narrow.At(2)});
  ASSERT_GE(curve.mass.size(), 3U);
  EXPECT_GE(curve.mass[1] - curve.mass[0], 998 * 0x1p-23);
  EXPECT_NEAR(MomentsOf(curve, 0).area, 6e-5, 1e-13);
}

TEST(SumOfCurves, AddsCurvesOnLatticesOfTheirOwn) {
  const MassCurve coarse{{0, 1, 2, 3}, {0, 2, 2, 0}};
  const MassCurve fine{{1.5, 2, 2.5}, {0, 4, 0}};
  const MassCurve sum = SumOfCurves(std::vector{coarse, fine});
  EXPECT_EQ(sum.mass, (std::vector<double>{0, 1, 1.5, 2, 2.5, 3}));
  EXPECT_EQ(sum.density, (std::vector<double>{0, 2, 2, 6, 1, 0}));
}

TEST(SumOfCurves, KeepsAreas) {
  Random random(4);
  const Points one = CountedPeak(16951.5, 12, random);
  const Points other = CountedPeak(16960, 30, random);
  const std::vector curves{SumOfPeaks(std::vector{one.At(12)}), SumOfPeaks(std::vector{other.At(30)})};
  const double expected = MomentsOf(curves[0], 0).area + MomentsOf(curves[1], 0).area;
  EXPECT_NEAR(MomentsOf(SumOfCurves(curves), 0).area / expected, 1, 1e-12);
}

TEST(SumOfCurves, OfNoneIsEmpty) {
  EXPECT_TRUE(SumOfCurves({}).mass.empty());
  EXPECT_TRUE(SumOfCurves(std::vector{MassCurve{}}).mass.empty());
}

}  // namespace
