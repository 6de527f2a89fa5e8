#include <gtest/gtest.h>

#include <tslbl/detect/LargestPeaks.h>
#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

using namespace TslBL;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

PeakInfo Row(double area, double maxAmpl, double centroidAmpl) {
  PeakInfo row;
  row.area = area;
  row.maxAmpl = maxAmpl;
  row.centroidAmpl = centroidAmpl;
  return row;
}

// Where in the rows the three are.
std::array<std::ptrdiff_t, 3> Places(const LargestPeaks& largest, const std::vector<PeakInfo>& rows) {
  return {largest.area - rows.data(), largest.maxAmpl - rows.data(), largest.centroidAmpl - rows.data()};
}

using Three = std::array<std::ptrdiff_t, 3>;

}  // namespace

TEST(LargestPeaks, AreNoneAtFirst) {
  const LargestPeaks largest;
  EXPECT_EQ(largest.area, nullptr);
  EXPECT_EQ(largest.maxAmpl, nullptr);
  EXPECT_EQ(largest.centroidAmpl, nullptr);
}

TEST(LargestPeaks, OneRowIsTheLargestInEverything) {
  const std::vector<PeakInfo> rows = {Row(-1.0, 0.0, -2.0)};
  LargestPeaks largest;
  largest.Offer(rows[0]);
  EXPECT_EQ(Places(largest, rows), (Three{0, 0, 0}));
}

TEST(LargestPeaks, EachValueHasItsOwn) {
  const std::vector<PeakInfo> rows = {Row(9, 1, 2), Row(1, 9, 3), Row(2, 3, 9)};
  LargestPeaks largest;
  for (const PeakInfo& row : rows) largest.Offer(row);
  EXPECT_EQ(Places(largest, rows), (Three{0, 1, 2}));
}

TEST(LargestPeaks, OfEqualRowsTheFirstStaysInWhateverOrderTheyCome) {
  std::vector<PeakInfo> rows(3, Row(5, 5, 5));
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i].apexIdx = static_cast<std::uint32_t>(10 * i);
  std::array<std::size_t, 3> order = {0, 1, 2};
  do {
    LargestPeaks largest;
    for (const std::size_t i : order) largest.Offer(rows[i]);
    EXPECT_EQ(Places(largest, rows), (Three{0, 0, 0}));
  } while (std::ranges::next_permutation(order).found);
}

// Rows that were found tallest first do not lie in the order of the curve.
TEST(LargestPeaks, OfEqualRowsTheFirstOnTheCurveStaysWhereverItLies) {
  std::vector<PeakInfo> rows(3, Row(5, 5, 5));
  rows[0].apexIdx = 20;
  rows[1].apexIdx = 10;
  rows[2].apexIdx = 30;
  LargestPeaks left, right;
  left.Offer(rows[0]);
  right.Offer(rows[2]);
  right.Offer(rows[1]);
  left.Join(right);
  EXPECT_EQ(Places(left, rows), (Three{1, 1, 1}));
}

TEST(LargestPeaks, JoinOffersEachRowForItsOwnValueOnly) {
  // The first is the largest in area alone; its other values must not come into it.
  const std::vector<PeakInfo> rows = {Row(9, 8, 8), Row(1, 5, 5)};
  LargestPeaks left;
  left.Offer(rows[1]);
  LargestPeaks right;
  right.area = &rows[0];
  left.Join(right);
  EXPECT_EQ(Places(left, rows), (Three{0, 1, 1}));
}

TEST(LargestPeaks, JoinWithNoneKeepsWhatIsThere) {
  const std::vector<PeakInfo> rows = {Row(1, 1, 1)};
  LargestPeaks largest;
  largest.Offer(rows[0]);
  largest.Join(LargestPeaks());
  EXPECT_EQ(Places(largest, rows), (Three{0, 0, 0}));
}

TEST(LargestPeaks, NoneJoinedWithSomeIsThose) {
  const std::vector<PeakInfo> rows = {Row(1, 1, 1)};
  LargestPeaks some;
  some.Offer(rows[0]);
  LargestPeaks largest;
  largest.Join(some);
  EXPECT_EQ(Places(largest, rows), (Three{0, 0, 0}));
}

TEST(LargestPeaks, AValueThatIsNoNumberIsBelowEveryNumber) {
  constexpr double kLowest = -std::numeric_limits<double>::infinity();
  const std::vector<PeakInfo> rows = {Row(kNaN, kNaN, kNaN), Row(kLowest, kLowest, kLowest)};
  for (const bool forward : {true, false}) {
    LargestPeaks largest;
    largest.Offer(rows[forward ? 0 : 1]);
    largest.Offer(rows[forward ? 1 : 0]);
    EXPECT_EQ(Places(largest, rows), (Three{1, 1, 1}));
  }
}

TEST(LargestPeaks, DoNotDependOnHowTheRowsAreSharedOut) {
  std::mt19937 random(11);
  const double values[] = {0.0, 1.0, 2.0, kNaN};
  for (int round = 0; round < 2000; ++round) {
    std::vector<PeakInfo> rows;
    for (std::uint32_t i = 0; i < 9; ++i) {
      rows.push_back(Row(values[random() % 4], values[random() % 4], values[random() % 4]));
      rows.back().apexIdx = i * 7 % 9;
    }
    LargestPeaks whole;
    for (const PeakInfo& row : rows) whole.Offer(row);

    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::shuffle(order, random);
    std::array<LargestPeaks, 3> parts;
    for (const std::size_t i : order) parts[random() % 3].Offer(rows[i]);
    parts[2].Join(parts[0]);
    parts[2].Join(parts[1]);
    ASSERT_EQ(Places(parts[2], rows), Places(whole, rows));
  }
}
