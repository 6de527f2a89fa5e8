// What the four filters have in common.
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <limits>

#include <closed/math/smooth/FilterCheck.h>

using namespace tests;

namespace {

struct NamedFilter {
  std::string name;
  std::uint32_t width;
  bool shrinksAtEnds;
  Filter filter;
};

std::vector<NamedFilter> AllFilters() {
  std::vector<NamedFilter> filters;
  for (std::uint32_t width : Numbers{2, 3, 4, 5, 7, 9, 12, 16, 17, 18, 31, 101, 151, 152, 401, 100000}) {
    filters.push_back({"Mean", width, true, Mean(width)});
    filters.push_back({"Median", width, true, Median(width)});
    filters.push_back({"Gaussian", width, true, Gaussian(width)});
    filters.push_back({"Quadratic", width, false, SavitzkyGolay(width, 2)});
    filters.push_back({"Quintic", width, false, SavitzkyGolay(width, 5)});
  }
  return filters;
}

std::vector<NamedFilter> FiltersThatShrinkAtEnds() {
  std::vector<NamedFilter> filters = AllFilters();
  std::erase_if(filters, [](const NamedFilter& filter) { return !filter.shrinksAtEnds; });
  return filters;
}

std::vector<NamedFilter> FiltersShorterThan(std::uint32_t width) {
  std::vector<NamedFilter> filters = AllFilters();
  std::erase_if(filters, [=](const NamedFilter& filter) { return filter.width >= width; });
  return filters;
}

std::string TestName(const testing::TestParamInfo<NamedFilter>& info) {
  return info.param.name + std::to_string(info.param.width);
}

Samples SmoothInPieces(const Filter& filter, const Samples& y, const std::vector<std::uint32_t>& cuts) {
  Samples out(y.size());
  for (std::size_t k = 0; k + 1 < cuts.size(); ++k)
    filter(y.data(), Size(y), cuts[k], cuts[k + 1], out.data());
  return out;
}

class EveryFilter : public testing::TestWithParam<NamedFilter> {
 protected:
  const Filter& filter = GetParam().filter;
};

INSTANTIATE_TEST_SUITE_P(Smoothing, EveryFilter, testing::ValuesIn(AllFilters()), TestName);

TEST_P(EveryFilter, GivesTheSameBitsHoweverTheCurveIsCut) {
  const Samples y = Noise(3000);
  const Samples whole = Smooth(filter, y);
  EXPECT_EQ(whole, SmoothInPieces(filter, y, {0, 1, 2, 17, 18, 400, 511, 513, 1024, 1500, 2990, 2999, 3000}));
  EXPECT_EQ(whole, SmoothInPieces(filter, y, {0, 1500, 3000}));
}

TEST_P(EveryFilter, WritesItsStretchOnly) {
  const Samples y = Noise(300);
  const Samples whole = Smooth(filter, y);
  Samples out(y.size(), 0.25);
  filter(y.data(), Size(y), 40, 200, out.data());
  for (std::size_t i = 0; i < y.size(); ++i) EXPECT_EQ(i >= 40 && i < 200 ? whole[i] : 0.25, out[i]) << i;
}

TEST_P(EveryFilter, TakesAnEndBeyondTheCurveForItsEnd) {
  const Samples y = Noise(300);
  Samples out(y.size());
  filter(y.data(), Size(y), 0, 4000000000U, out.data());
  EXPECT_EQ(Smooth(filter, y), out);
}

TEST_P(EveryFilter, DoesNothingOnAnEmptyStretch) {
  const Samples y = Noise(30);
  Samples out(y.size(), 0.25);
  filter(y.data(), Size(y), 7, 7, out.data());
  filter(y.data(), Size(y), 9, 7, out.data());
  filter(y.data(), Size(y), 30, 40, out.data());
  EXPECT_EQ(Samples(y.size(), 0.25), out);
}

TEST_P(EveryFilter, DoesNothingOnAnEmptyCurve) {
  Samples out(5, 0.25);
  filter(nullptr, 0, 0, 5, out.data());
  EXPECT_EQ(Samples(5, 0.25), out);
}

TEST_P(EveryFilter, MayWriteOverItsInput) {
  const Samples y = Noise(700);
  Samples inPlace = y;
  filter(inPlace.data(), Size(y), 0, Size(y), inPlace.data());
  EXPECT_EQ(Smooth(filter, y), inPlace);
}

TEST_P(EveryFilter, KeepsAStraightLine) {
  for (std::size_t n : Lengths{1, 2, 3, 6, 500}) ExpectNear(Line(n), Smooth(filter, Line(n)), 1e-12);
}

TEST_P(EveryFilter, MirrorsWithItsInput) {
  Samples y = Noise(900);
  Samples smoothed = Smooth(filter, y);
  std::reverse(y.begin(), y.end());
  std::reverse(smoothed.begin(), smoothed.end());
  ExpectNear(smoothed, Smooth(filter, y), 1e-11);
}

TEST_P(EveryFilter, ScalesWithItsInput) {
  Samples y = Noise(400);
  Samples smoothed = Smooth(filter, y);
  for (double& value : y) value /= 1024;
  for (double& value : smoothed) value /= 1024;
  EXPECT_EQ(smoothed, Smooth(filter, y));
}

class ShrinkingFilter : public EveryFilter {};

INSTANTIATE_TEST_SUITE_P(Smoothing, ShrinkingFilter, testing::ValuesIn(FiltersThatShrinkAtEnds()), TestName);

TEST_P(ShrinkingFilter, KeepsTheEndPoints) {
  const Samples y = Noise(555);
  EXPECT_EQ(y.front(), Smooth(filter, y).front());
  EXPECT_EQ(y.back(), Smooth(filter, y).back());
}

TEST_P(ShrinkingFilter, MakesNoNegativeValues) {
  const Samples y = Tabulate(1500, [](double i) { return i > 300 && i < 330 ? 0.1 * i * i * i : 0.0; });
  for (double value : Smooth(filter, y)) ASSERT_GE(value, 0);
}

// Windows of up to 401 points, the Gaussian reaching to 2 widths on each side.
class ShortFilter : public EveryFilter {};

INSTANTIATE_TEST_SUITE_P(Smoothing, ShortFilter, testing::ValuesIn(FiltersShorterThan(402)), TestName);

TEST_P(ShortFilter, MovesWithItsInput) {
  for (const std::size_t by : {37U, 67000U}) {
    const Samples y = Noise(by + 3000);
    const Samples smoothed = Smooth(filter, y);
    const Samples smoothedLater = Smooth(filter, Samples(y.end() - 3000, y.end()));
    for (std::size_t i = 1200; i < 1260; ++i) ASSERT_NEAR(smoothed[i + by], smoothedLater[i], 1e-9) << by;
  }
}

TEST_P(ShortFilter, LeavesNoTraceOfATallPeakBehindIt) {
  Samples y(3000);
  y[100] = 1e18 / 3;
  EXPECT_EQ(0, Smooth(filter, y)[1500]);
}

TEST_P(ShortFilter, KeepsNaNWithinItsWindow) {
  Samples y = Counts(3000);
  const Samples clean = Smooth(filter, y);
  y[1500] = std::numeric_limits<double>::quiet_NaN();
  const Samples smoothed = Smooth(filter, y);
  for (std::size_t i = 0; i < 600; ++i) ASSERT_EQ(clean[i], smoothed[i]) << i;
  for (std::size_t i = 2400; i < 3000; ++i) ASSERT_EQ(clean[i], smoothed[i]) << i;
}

TEST_P(ShortFilter, SmoothsWhatIsBesideNonFiniteData) {
  Samples y = Counts(3000);
  const Samples clean = Smooth(filter, y);
  for (std::size_t i = 1000; i < 2000; i += 7) y[i] = std::numeric_limits<double>::quiet_NaN();
  for (std::size_t i = 1003; i < 2000; i += 11) y[i] = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1004; i < 2000; i += 13) y[i] = -std::numeric_limits<double>::infinity();
  const Samples smoothed = Smooth(filter, y);
  EXPECT_EQ(Samples(clean.begin(), clean.begin() + 200), Samples(smoothed.begin(), smoothed.begin() + 200));
  EXPECT_EQ(Samples(clean.end() - 200, clean.end()), Samples(smoothed.end() - 200, smoothed.end()));
}

TEST(Smoothing, CopiesForWidthsZeroAndOne) {
  const Samples y = Noise(50);
  for (std::uint32_t width : Numbers{0, 1}) {
    for (const Filter& filter : {Mean(width), Median(width), Gaussian(width), SavitzkyGolay(width, 2)}) {
      EXPECT_EQ(y, Smooth(filter, y));
    }
  }
}

TEST(Smoothing, TakesTheWidestWidth) {
  const Samples y = Counts(101);
  const std::uint32_t widest = std::numeric_limits<std::uint32_t>::max();
  EXPECT_EQ(Smooth(Mean(101), y), Smooth(Mean(widest), y));
  EXPECT_EQ(Smooth(Median(101), y), Smooth(Median(widest), y));
  EXPECT_EQ(Smooth(SavitzkyGolay(101, 3), y), Smooth(SavitzkyGolay(widest, 3), y));
  ExpectNear(Smooth(Mean(101), y), Smooth(Gaussian(widest), y), 1e-12);
}

// 60 001 points of 1 among 150 001. A window of 70 000 points on each side sees all of them from afar, and
// they are less than half of it.
constexpr std::uint32_t kLong = 150001;

Samples LongBlock() {
  return Tabulate(kLong, [](double i) { return std::abs(i - 75000) <= 30000 ? 1.0 : 0.0; });
}

TEST(Smoothing, MeansOfMoreThan65536PointsOnEachSideAreExact) {
  const Samples odd = Smooth(Mean(140001), LongBlock());
  const Samples even = Smooth(Mean(140000), LongBlock());
  for (const std::size_t at : {70000U, 75000U, 80000U}) {
    EXPECT_DOUBLE_EQ(odd[at], 60001.0 / 140001) << at;
    EXPECT_DOUBLE_EQ(even[at], 60001.0 / 140000) << at;
  }
  for (const std::size_t at : {69000U, 81000U}) EXPECT_DOUBLE_EQ(odd[at], 60001.0 / 138001) << at;
}

TEST(Smoothing, MediansOfMoreThan65536PointsOnEachSideAreThoseOfTheWholeWindow) {
  const Samples smoothed = Smooth(Median(140001), LongBlock());
  Samples hole = LongBlock();
  for (double& value : hole) value = 1 - value;
  const Samples smoothedHole = Smooth(Median(140001), hole);
  for (const std::size_t at : {69000U, 75000U, 81000U}) {
    EXPECT_EQ(smoothed[at], 0) << at;
    EXPECT_EQ(smoothedHole[at], 1) << at;
  }
  EXPECT_EQ(smoothed[50000], 1);  // its window ends with the curve
}

TEST(Smoothing, PolynomialsOverMoreThan65536PointsOnEachSideFitTheWholeWindow) {
  const Samples mean = Smooth(SavitzkyGolay(140001, 0), LongBlock());
  for (const std::size_t at : {0U, 69999U, 75000U, 150000U})
    EXPECT_NEAR(mean[at], 60001.0 / 140001, 1e-12) << at;
  const Samples line = Line(kLong);
  ExpectNear(line, Smooth(SavitzkyGolay(140001, 1), line), 1e-10);
}

// Three points suffice, since each of them costs as much as the window is long.
TEST(Smoothing, AGaussianOfMoreThan65536PointsOnEachSideHasItsIntegral) {
  const Samples y = LongBlock();
  Samples out(y.size());
  Gaussian(36000)(y.data(), Size(y), 74999, 75002, out.data());
  const double sigma = 36000 / (2 * std::sqrt(2 * std::log(2.0)));
  const auto within = [&](double points) { return std::erf(points / (sigma * std::sqrt(2.0))); };
  EXPECT_NEAR(out[75000], within(30000.5) / within(std::ceil(4.5 * sigma) + 0.5), 1e-8);
}

}  // namespace
