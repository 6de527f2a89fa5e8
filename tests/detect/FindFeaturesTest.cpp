// Tests: FindFeaturesSequential.cpp.

#include <gtest/gtest.h>

#include <detect/PeakCurves.h>
#include <detect/PlainSweep.h>
#include <detect/RandomCurves.h>
#include <tslbl/detect/FindFeatures.h>
#include <chrono>

using namespace TslBL;
using namespace tests;

namespace {

CurveView ViewOf(const std::vector<double>& y, const std::vector<double>& baseline) {
  return {y.data(), baseline.data(), static_cast<std::ptrdiff_t>(y.size())};
}

std::string Text(const std::vector<PeakFeature>& features) {
  std::ostringstream out;
  for (const PeakFeature& f : features)
    out << (&f == features.data() ? "" : " ") << f.start << '-' << f.apex << '-' << f.end;
  return out.str();
}

std::string Text(const std::vector<std::array<int, 3>>& rows) {
  std::ostringstream out;
  for (const auto& [start, apex, end] : rows)
    out << (&start == rows.data()->data() ? "" : " ") << start << '-' << apex << '-' << end;
  return out.str();
}

std::vector<PeakFeature> FeaturesOf(const std::vector<double>& y, const std::vector<double>& baseline,
                                    double maxValley) {
  FindFeatures finder(ViewOf(y, baseline), maxValley);
  finder.Sweep(0, static_cast<std::ptrdiff_t>(y.size()));
  return finder.Settled();
}
std::vector<PeakFeature> FeaturesOf(const RandomCurve& c) { return FeaturesOf(c.y, c.baseline, c.maxValley); }

// The features of amplitudes over a flat baseline, as "start-apex-end ...".
std::string Found(const std::string& y, double maxValley = 25.0, double baseline = 0.0) {
  const std::vector<double> values = Values(y);
  return Text(FeaturesOf(values, std::vector<double>(values.size(), baseline), maxValley));
}

// Swept in parts: cut at random where the curve rises from the baseline, the parts spread
// over finders at random, the finders joined with their neighbours in random order.
std::vector<PeakFeature> FoundInParts(const RandomCurve& c, RandomCurves& random) {
  const CurveView view = ViewOf(c.y, c.baseline);
  const FindFeatures whole(view, c.maxValley);
  std::vector<FindFeatures> finders = {whole.NewForPart()};
  std::ptrdiff_t begin = 0;
  for (std::ptrdiff_t i = 1; i < view.n; ++i) {
    if (!view.RisesFromBaseline(i) || random.Below(3) == 0) continue;
    finders.back().Sweep(begin, i);
    begin = i;
    if (random.Below(2) == 0) finders.push_back(whole.NewForPart());
  }
  finders.back().Sweep(begin, view.n);
  while (finders.size() > 1) {
    const auto left = finders.begin() + random.Below(static_cast<int>(finders.size()) - 1);
    left->Join(*(left + 1));
    finders.erase(left + 1);
  }
  return finders.front().Settled();
}

}  // namespace

struct SweepCase {
  const char* why;
  const char* y;
  double maxValley;
  double baseline;
  const char* expected;

  friend void PrintTo(const SweepCase& c, std::ostream* out) { *out << c.y; }
};

class FindFeaturesOn : public testing::TestWithParam<SweepCase> {};

TEST_P(FindFeaturesOn, HandMadeCurve) {
  const SweepCase& c = GetParam();
  EXPECT_EQ(Found(c.y, c.maxValley, c.baseline), c.expected) << c.why;
}

INSTANTIATE_TEST_SUITE_P(
    FindFeatures, FindFeaturesOn,
    testing::Values(
        SweepCase{"one peak, from baseline to baseline", "0 0 1 5 9 5 1 0 0", 25, 0, "1-4-7"},
        SweepCase{"one point is no peak", "5", 25, 0, ""},
        SweepCase{"a flat curve on the baseline", "0 0 0 0", 25, 0, ""},
        SweepCase{"a flat curve above the baseline", "3 3 3 3", 25, 0, ""},
        SweepCase{"a curve below the baseline", "1 5 1", 25, 6, ""},
        SweepCase{"a peak that only touches the baseline", "1 5 1", 25, 5, ""},
        SweepCase{"a plateau has its apex at its left end", "0 2 7 7 7 2 0", 25, 0, "0-2-6"},
        SweepCase{"a falling curve has its apex on the first point", "9 5 2 1", 25, 0, "0-0-3"},
        SweepCase{"a plateau at the start that falls has its apex on the first point", "9 9 4 1", 25, 0,
                  "0-0-3"},
        SweepCase{"a plateau at the start that rises has none", "4 4 9 4", 25, 0, "1-2-3"},
        SweepCase{"a peak on the last point, the point before lower", "0 0 3 6", 25, 0, "1-3-3"},
        SweepCase{"none on the last point where the point before is as high", "0 3 6 6", 25, 0, "0-2-2"},
        SweepCase{"an end on a falling tail", "0 3 6 5", 25, 0, "0-2-3"},
        SweepCase{"an end before a flat tail", "0 3 6 5 5", 25, 0, "0-2-3"},
        SweepCase{"two peaks that the baseline parts", "0 4 0 5 0", 25, 0, "0-1-2 2-3-4"},
        SweepCase{"a deep valley parts two peaks", "0 8 9 5 2 4 5 9 10 5 0", 25, 0, "0-2-4 4-8-10"},
        SweepCase{"a valley above the limit: the taller, later one swallows the shorter",
                  "0 8 9 5 3 4 5 9 10 5 0", 25, 0, "0-8-10"},
        SweepCase{"a valley above the limit: the taller, earlier one spans the shorter",
                  "0 8 10 5 3 4 5 8 9 5 0", 25, 0, "0-2-10"},
        SweepCase{"a valley at the limit counts as low", "0 6 8 5 2 4 5 6 8 5 0", 25, 0, "0-2-4 4-8-10"},
        SweepCase{"MaxValley 0 parts peaks at the baseline only", "0 9 9 1 1 5 10 0", 0, 0, "0-6-7"},
        SweepCase{"MaxValley 100 parts peaks at every valley", "0 9 8 7 8 9 9 8 7 8 9 0", 100, 0,
                  "0-1-3 3-5-8 8-10-11"},
        SweepCase{"a dip of one point between steps is no valley", "0 9 3 9 0", 100, 0, "0-1-4"},
        SweepCase{"of equal peaks the first keeps its span", "0 9 8 7 8 9 0", 25, 0, "0-1-6"},
        SweepCase{"a shorter peak is cut at the valley of the taller one", "0 6 7 6 5 4 5 6 20 30 40 20 0",
                  25, 0, "0-2-5 5-10-12"},
        SweepCase{"a curve that crosses the baseline", "3 1 2 6 2 1 3", 25, 2, "0-0-1 2-3-4 5-6-6"}));

TEST(FindFeatures, AnswersAsThePlainSweepOnRandomCurves) {
  RandomCurves random(20240601);
  int setFree = 0, cut = 0, swallowed = 0;
  for (int i = 0; i < 40000; ++i) {
    const RandomCurve c = random.Next(48);
    const PlainSweep plain(c.y, c.baseline, c.maxValley);
    setFree += plain.timesSetFree, cut += plain.timesCut, swallowed += plain.timesSwallowed;
    ASSERT_EQ(Text(FeaturesOf(c)), Text(plain.Rows())) << c.Text();
  }
  // The curves are of no use for this unless they reach every rule.
  EXPECT_GT(setFree, 1000);
  EXPECT_GT(cut, 1000);
  EXPECT_GT(swallowed, 1000);
}

TEST(FindFeatures, AnswersAsThePlainSweepOnEveryCurveOfSevenPointsAndFourLevels) {
  for (const double maxValley : {0.0, 25.0, 100.0}) {
    for (int code = 0; code < 4 * 4 * 4 * 4 * 4 * 4 * 4; ++code) {
      std::vector<double> y;
      for (int rest = code; y.size() < 7; rest /= 4) y.push_back(rest % 4);
      const std::vector<double> baseline(y.size(), 0.0);
      ASSERT_EQ(Text(FeaturesOf(y, baseline, maxValley)), Text(PlainSweep(y, baseline, maxValley).Rows()))
          << "curve " << code << ", MaxValley " << maxValley;
    }
  }
}

TEST(FindFeatures, AnswersAsThePlainSweepWhereNumbersAreMissing) {
  RandomCurves random(77);
  for (int i = 0; i < 20000; ++i) {
    const RandomCurve c = random.NextBroken(40);
    ASSERT_EQ(Text(FeaturesOf(c)), Text(PlainSweep(c.y, c.baseline, c.maxValley).Rows())) << c.Text();
  }
}

// Seen through peak detection, which drops features of fewer than three points.
TEST(FindFeatures, InASearchRangeAreThoseOfTheRangeAlone) {
  RandomCurves random(9);
  for (int i = 0; i < 5000; ++i) {
    const RandomCurve c = random.Next(48);
    const int n = static_cast<int>(c.y.size());
    const int first = random.Below(n);
    const int last = first + random.Below(n - first);
    TestCurve curve = PeakCurve(c.y, c.baseline);
    curve.peakDetectParams.MaxValley = c.maxValley;
    curve.peakDetectParams.FullSearch = false;
    curve.peakDetectParams.SearchStart = first;
    curve.peakDetectParams.SearchEnd = last;

    const std::vector<double> y(c.y.begin() + first, c.y.begin() + last + 1);
    const std::vector<double> baseline(c.baseline.begin() + first, c.baseline.begin() + last + 1);
    auto rows = PlainSweep(y, baseline, c.maxValley).Rows();
    std::erase_if(rows, [](const auto& row) { return row[2] - row[0] < 2; });
    for (auto& row : rows)
      for (int& point : row) point += first;
    ASSERT_EQ(SpansFound(curve), Text(rows)) << c.Text();
  }
}

TEST(FindFeatures, TheFeaturesOfTheWholeAreThoseOfItsParts) {
  RandomCurves random(4711);
  int inParts = 0;
  for (int i = 0; i < 40000; ++i) {
    const RandomCurve c = random.Next(80);
    const std::vector<PeakFeature> whole = FeaturesOf(c);
    inParts += whole.size() > 1;
    ASSERT_EQ(Text(FoundInParts(c, random)), Text(whole)) << c.Text();
  }
  EXPECT_GT(inParts, 10000);
}

TEST(FindFeatures, TheFeaturesOfTheWholeAreThoseOfItsPartsWhereNumbersAreMissing) {
  RandomCurves random(4712);
  for (int i = 0; i < 20000; ++i) {
    const RandomCurve c = random.NextBroken(80);
    ASSERT_EQ(Text(FoundInParts(c, random)), Text(FeaturesOf(c))) << c.Text();
  }
}

TEST(FindFeatures, AscendAndDoNotOverlap) {
  RandomCurves random(5);
  for (int i = 0; i < 20000; ++i) {
    const RandomCurve c = random.Next(60);
    std::ptrdiff_t from = 0;
    for (const PeakFeature& f : FeaturesOf(c)) {
      ASSERT_TRUE(from <= f.start && f.start <= f.apex && f.apex <= f.end) << c.Text();
      from = f.end;
    }
  }
}

TEST(FindFeatures, HaveTheirApexOnAPointAboveTheBaselineThatIsNotBelowItsNeighbours) {
  RandomCurves random(6);
  for (int i = 0; i < 20000; ++i) {
    const RandomCurve c = random.Next(60);
    for (const PeakFeature& f : FeaturesOf(c)) {
      const auto apex = static_cast<std::size_t>(f.apex);
      ASSERT_GT(c.y[apex], c.baseline[apex]) << c.Text();
      ASSERT_TRUE(apex == 0 || c.y[apex - 1] < c.y[apex]) << c.Text();
      ASSERT_TRUE(apex + 1 == c.y.size() || c.y[apex + 1] <= c.y[apex]) << c.Text();
    }
  }
}

TEST(FindFeatures, StayWhenCurveAndBaselineAreScaledByAPowerOfTwo) {
  RandomCurves random(7);
  for (int i = 0; i < 5000; ++i) {
    RandomCurve c = random.Next(60);
    const auto before = FeaturesOf(c);
    for (double& value : c.y) value *= 1024.0;
    for (double& value : c.baseline) value *= 1024.0;
    ASSERT_EQ(FeaturesOf(c), before) << c.Text();
  }
}

TEST(FindFeatures, MoveWithACurveThatIsMovedAlongTheBaseline) {
  RandomCurves random(8);
  for (int i = 0; i < 5000; ++i) {
    RandomCurve c = random.Next(60);
    c.baseline.assign(c.y.size(), 0.0);
    c.y.front() = 0.0;
    auto expected = FeaturesOf(c);
    for (PeakFeature& f : expected) f.start += 17, f.apex += 17, f.end += 17;
    c.y.insert(c.y.begin(), 17, 0.0);
    c.baseline.insert(c.baseline.begin(), 17, 0.0);
    ASSERT_EQ(Text(FeaturesOf(c)), Text(expected)) << c.Text();
  }
}

// Every ripple on the ramp is a peak that reaches back over most of those before it. To walk
// back for each of them takes minutes here, to settle them one by one takes forever.
TEST(FindFeatures, OnALongRampTakeNoLongerThanElsewhere) {
  std::vector<double> y;
  for (double level = 0.0; y.size() < 400000; level += 4.0)
    y.insert(y.end(), {level + 6.0, level + 4.0, level + 2.0, level + 3.0});
  const std::vector<double> baseline(y.size(), -1.0);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(FeaturesOf(y, baseline, 25.0).empty());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(FindFeatures, AnEmptyPartAddsNothing) {
  const std::vector<double> y = Values("0 5 0 0 0");
  const std::vector<double> baseline(y.size(), 0.0);
  FindFeatures left({y.data(), baseline.data(), 5}, 25.0);
  left.Sweep(0, 5);
  left.Join(left.NewForPart());
  EXPECT_EQ(Text(left.Settled()), "0-1-2");
}
