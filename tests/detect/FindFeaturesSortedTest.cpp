// The Sorted route, seen through peak detection with every limit off: the table then holds
// each row that was found, but those of fewer than three points.

#include <detect/PeakCurves.h>
#include <detect/PlainSorted.h>
#include <detect/RandomCurves.h>
#include <algorithm>
#include <limits>

using namespace TslBL;
using namespace tests;

namespace {

TestCurve SortedCurve(const std::vector<double>& y, const std::vector<double>& baseline) {
  TestCurve curve = PeakCurve(y, baseline);
  curve.peakDetectParams.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  return curve;
}
TestCurve SortedCurve(const std::vector<double>& y) {
  return SortedCurve(y, std::vector<double>(y.size(), 0.0));
}
TestCurve SortedCurve(const std::string& y) { return SortedCurve(Values(y)); }

std::string Found(const std::string& y, double maxValley = 25.0) {
  TestCurve curve = SortedCurve(y);
  curve.peakDetectParams.MaxValley = maxValley;
  return SpansFound(curve);
}

std::string Text(const std::vector<PlainRow>& rows) {
  std::string text;
  for (const PlainRow& r : rows) {
    if (r.end < r.start + 2) continue;
    text += (text.empty() ? "" : " ") + std::to_string(r.start) + '-' + std::to_string(r.apex) + '-' +
            std::to_string(r.end);
  }
  return text;
}

constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

// Hills of the given heights, three points each, with the baseline between them.
std::vector<double> Hills(const std::vector<double>& heights) {
  std::vector<double> y = {0.0};
  for (const double height : heights) y.insert(y.end(), {height, 0.0});
  return y;
}

}  // namespace

struct SortedCase {
  const char* why;
  const char* y;
  double maxValley;
  const char* expected;

  friend void PrintTo(const SortedCase& c, std::ostream* out) { *out << c.y; }
};

class FindFeaturesSortedOn : public testing::TestWithParam<SortedCase> {};

TEST_P(FindFeaturesSortedOn, HandMadeCurve) {
  const SortedCase& c = GetParam();
  EXPECT_EQ(Found(c.y, c.maxValley), c.expected) << c.why;
}

INSTANTIATE_TEST_SUITE_P(
    FindFeaturesSorted, FindFeaturesSortedOn,
    testing::Values(SortedCase{"one peak, from baseline to baseline", "0 0 1 5 9 5 1 0 0", 25, "1-4-7"},
                    SortedCase{"a range of two points", "0 5", 25, ""}, SortedCase{"one point", "5", 25, ""},
                    SortedCase{"three points", "0 5 0", 25, "0-1-2"},
                    SortedCase{"a plateau has its apex in the middle", "0 2 7 7 7 2 0", 25, "0-3-6"},
                    SortedCase{"a curve that falls from its first point has no peak", "9 5 2 1", 25, ""},
                    SortedCase{"a curve that rises to its last point has no peak", "0 3 6", 25, ""},
                    SortedCase{"a deep valley parts two peaks", "0 8 9 5 2 4 5 9 10 5 0", 25, "0-2-4 4-8-10"},
                    SortedCase{"the taller one spans the shorter behind a shallow valley",
                               "0 8 9 5 3 4 5 9 10 5 0", 25, "0-8-10"},
                    SortedCase{"of equal peaks the first spans the other", "0 9 8 7 8 9 0", 25, "0-1-6"},
                    SortedCase{"a start before the apex of the peak to the left becomes its end",
                               "0 6 20 30 40 20 4 5 6 7 8 7 0", 10, "0-4-6 6-10-12"},
                    SortedCase{"a curve without any point above the baseline", "0 -5 -1 -5 0", 25, ""}));

TEST(FindFeaturesSorted, AnswersAsThePlainFormOnRandomCurves) {
  RandomCurves random(31);
  int gaps = 0;
  for (int i = 0; i < 20000; ++i) {
    const RandomCurve c = random.Next(48);
    TestCurve curve = SortedCurve(c.y, c.baseline);
    curve.peakDetectParams.MaxValley = c.maxValley;
    const PlainSorted plain(c.y, c.baseline, c.maxValley);
    const auto rows = plain.Rows(0, static_cast<int>(c.y.size()) - 1, c.baseline[0], kAll);
    for (std::size_t k = 1; k < rows.size(); ++k)
      gaps += rows[k].start > rows[k - 1].end && c.y[static_cast<std::size_t>(rows[k - 1].end)] >
                                                     c.baseline[static_cast<std::size_t>(rows[k - 1].end)];
    ASSERT_EQ(SpansFound(curve), Text(rows)) << c.Text();
  }
  EXPECT_GT(gaps, 100) << "the curves should also have peaks that left an overlap to neither";
}

TEST(FindFeaturesSorted, TakesItsCandidatesFromTheSearchRangeAndTheirSpansFromTheWholeCurve) {
  RandomCurves random(32);
  for (int i = 0; i < 10000; ++i) {
    const RandomCurve c = random.Next(48);
    const int n = static_cast<int>(c.y.size());
    const int first = random.Below(n);
    const int last = first + random.Below(n - first);
    TestCurve curve = SortedCurve(c.y, c.baseline);
    curve.peakDetectParams.MaxValley = c.maxValley;
    curve.peakDetectParams.FullSearch = false;
    curve.peakDetectParams.SearchStart = first;
    curve.peakDetectParams.SearchEnd = last;
    const PlainSorted plain(c.y, c.baseline, c.maxValley);
    ASSERT_EQ(SpansFound(curve), Text(plain.Rows(first, last, c.baseline[0], kAll))) << c.Text();
  }
}

TEST(FindFeaturesSorted, ARangeOfTwoPointsHoldsNoCandidate) {
  TestCurve curve = SortedCurve("0 2 9 2 0 3 3 0");
  curve.peakDetectParams.FullSearch = false;
  for (int first = 0; first < 7; ++first) {
    curve.peakDetectParams.SearchStart = first;
    curve.peakDetectParams.SearchEnd = first + 1;
    EXPECT_EQ(SpansFound(curve), "") << "from point " << first;
  }
  curve.peakDetectParams.SearchStart = 1;
  curve.peakDetectParams.SearchEnd = 3;
  EXPECT_EQ(SpansFound(curve), "0-2-4") << "three points hold one";
}

TEST(FindFeaturesSorted, StopsAtPeakCntRows) {
  RandomCurves random(33);
  for (int i = 0; i < 5000; ++i) {
    const RandomCurve c = random.Next(48);
    TestCurve curve = SortedCurve(c.y, c.baseline);
    curve.peakDetectParams.MaxValley = c.maxValley;
    curve.peakDetectParams.PeakCntInUse = true;
    curve.peakDetectParams.PeakCnt = static_cast<std::uint32_t>(1 + random.Below(3));
    const PlainSorted plain(c.y, c.baseline, c.maxValley);
    const auto rows =
        plain.Rows(0, static_cast<int>(c.y.size()) - 1, c.baseline[0], curve.peakDetectParams.PeakCnt);
    ASSERT_EQ(SpansFound(curve), Text(rows)) << c.Text();
  }
}

TEST(FindFeaturesSorted, ConsidersTheFiveThousandTallestOnly) {
  std::vector<double> heights(5003, 7.0);
  for (const std::size_t i : {10u, 20u, 4000u}) heights[i] = 5.0;  // the three shortest
  heights[5002] = 9.0;
  TestCurve curve = SortedCurve(Hills(heights));
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(curve.peaks.size(), 5000u);
  EXPECT_EQ(std::ranges::min_element(curve.peaks, {}, &PeakInfo::apexAmpl)->apexAmpl, 7.0);
}

TEST(FindFeaturesSorted, OfEqualCandidatesBeyondFiveThousandTheLastAreLeftOut) {
  TestCurve curve = SortedCurve(Hills(std::vector<double>(5002, 7.0)));
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(curve.peaks.size(), 5000u);
  EXPECT_EQ(curve.peaks.back().apexIdx, 9999u);
}

// The second peak is twice as high, the first on an axis of twice the steps.
TEST(FindFeaturesSorted, OfPeaksOfEqualAreaTheFirstIsTheLargest) {
  TestCurve curve = SortedCurve("0 8 0 0 16 0");
  curve.xAxis = {0, 2, 4, 6, 7, 8};
  curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  ASSERT_TRUE(Detect(curve).ok);
  ASSERT_EQ(curve.peaks.size(), 2u);
  ASSERT_EQ(curve.peaks[0].area, curve.peaks[1].area);
  EXPECT_EQ(curve.largestAreaIdx, 0);
  EXPECT_EQ(curve.largestMaxIdx, 1);
}

// Both peaks walk over the small bump between the valleys, which then becomes a peak of its own.
TEST(FindFeaturesSorted, AnOverlapWithThePeakToTheLeftIsLeftToNeither) {
  EXPECT_EQ(Found("0 30 40 30 9 2 4 2 12 20 12 0"), "0-2-5 5-6-7 7-9-11");
}

TEST(FindFeaturesSorted, AnOverlapWithThePeakToTheRightIsLeftToNeither) {
  EXPECT_EQ(Found("0 12 20 12 2 4 2 9 30 40 30 0"), "0-2-4 4-5-6 6-9-11");
}

TEST(FindFeaturesSorted, PassesOverNumbersThatAreMissing) {
  RandomCurves random(34);
  for (int i = 0; i < 5000; ++i) {
    const RandomCurve c = random.NextBroken(48);
    TestCurve curve = SortedCurve(c.y, c.baseline);
    curve.peakDetectParams.MaxValley = c.maxValley;
    ASSERT_TRUE(Detect(curve).ok) << c.Text();
    for (const PeakInfo& p : curve.peaks) {
      ASSERT_TRUE(p.startIdx + 2 <= p.endIdx && p.endIdx < c.y.size()) << c.Text();
      ASSERT_GT(p.apexAmpl, c.baseline[p.apexIdx]) << c.Text();
    }
  }
}
