#include <gtest/gtest.h>

#include <chargestate/SampleSeries.h>
#include <limits>

using namespace tests;

namespace {

DeconSpectrum WithMasses(const std::vector<double>& masses) {
  DeconSpectrum s;
  s.MassX = masses;
  return s;
}

// The series that is nearest to a point; 77 if none is named, and -1 if there is no answer.
int SeriesAt(const DeconSpectrum& s, std::uint32_t massIndex) {
  std::uint32_t index = 77;
  return s.QCSSeriesIndexFromMassIndex(massIndex, index) ? static_cast<int>(index) : -1;
}

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(QCSMassCurveIdx, IsTheLastPointThatIsNotAboveTheMass) {
  const DeconSpectrum s = WithMasses({100, 200, 300, 400, 500, 600, 700});
  for (std::uint32_t i = 0; i < 6; ++i)
    for (const double beyond : {0.0, 50.0, 99.0}) EXPECT_EQ(s.QCSMassCurveIdx(100.0 + 100 * i + beyond), i);
}

TEST(QCSMassCurveIdx, IsClampedToTheEnds) {
  const DeconSpectrum s = WithMasses({100, 200, 300});
  EXPECT_EQ(s.QCSMassCurveIdx(-1.0), 0u);
  EXPECT_EQ(s.QCSMassCurveIdx(100.0), 0u);
  EXPECT_EQ(s.QCSMassCurveIdx(300.0), 2u);
  EXPECT_EQ(s.QCSMassCurveIdx(1e9), 2u);
}

TEST(QCSMassCurveIdx, TakesAPointWithinAMillionth) {
  const DeconSpectrum s = WithMasses({0, 1, 2, 3});
  EXPECT_EQ(s.QCSMassCurveIdx(2.0 - 0.0000009), 2u);
  EXPECT_EQ(s.QCSMassCurveIdx(2.0 - 0.0000011), 1u);
}

TEST(QCSMassCurveIdx, IsZeroWithoutACurveAndForNoMass) {
  EXPECT_EQ(WithMasses({}).QCSMassCurveIdx(100.0), 0u);
  EXPECT_EQ(WithMasses({7}).QCSMassCurveIdx(100.0), 0u);
  EXPECT_EQ(WithMasses({100, 200, 300}).QCSMassCurveIdx(kNaN), 0u);
}

TEST(QCSMassCurveIdx, StaysOnACurveThatDoesNotAscend) {
  for (const double mass : {0.5, 2.5, 3.5}) EXPECT_LT(WithMasses({0, 2, 1, 2, 4}).QCSMassCurveIdx(mass), 5u);
  EXPECT_LT(WithMasses({1, kNaN, kNaN, kNaN}).QCSMassCurveIdx(3.0), 4u);
}

TEST(QCSSeriesIndexFromMassIndex, IsTheNearestSeries) {
  DeconSpectrum s = WithThreeSeries();  // at 1000, 2000, 3000
  s.MassX = {900, 1400, 1600, 2600, 3100};
  EXPECT_EQ(SeriesAt(s, 0), 0);
  EXPECT_EQ(SeriesAt(s, 1), 0);
  EXPECT_EQ(SeriesAt(s, 2), 1);
  EXPECT_EQ(SeriesAt(s, 3), 2);
  EXPECT_EQ(SeriesAt(s, 4), 2);
}

TEST(QCSSeriesIndexFromMassIndex, OfTwoThatAreEquallyNearIsTheEarlier) {
  DeconSpectrum s = WithThreeSeries();
  s.MassX = {0, 1500, 2500, 4000};
  EXPECT_EQ(SeriesAt(s, 1), 0);
  EXPECT_EQ(SeriesAt(s, 2), 1);
}

TEST(QCSSeriesIndexFromMassIndex, LeavesTheIndexIfNoneIsNearerThanTheCurveIsWide) {
  DeconSpectrum s = WithThreeSeries();
  s.MassX = {5000, 5100, 7000};
  EXPECT_EQ(SeriesAt(s, 0), 77);
  s.MassX = {5000, 5100, 7000.5};
  EXPECT_EQ(SeriesAt(s, 0), 2);
}

TEST(QCSSeriesIndexFromMassIndex, IsTheOneSeriesThatThereIs) {
  DeconSpectrum s;
  s.CSAddSeries(kResolved, 1000.0, 0.5, PeaksAt("1m"));
  s.MassX = {5000, 5100};
  EXPECT_EQ(SeriesAt(s, 0), 0);
  EXPECT_EQ(SeriesAt(s, 2), 0);
  EXPECT_EQ(SeriesAt(s, 3), -1);
}

TEST(QCSSeriesIndexFromMassIndex, IsNoneWithoutSeriesAndBeyondTheCurve) {
  EXPECT_EQ(SeriesAt(WithMasses({5000, 5100}), 0), -1);
  DeconSpectrum s = WithThreeSeries();
  EXPECT_EQ(SeriesAt(s, 0), -1);
  s.MassX = {1000, 2000};
  EXPECT_EQ(SeriesAt(s, 2), -1);
  EXPECT_EQ(SeriesAt(s, 3), -1);
}
