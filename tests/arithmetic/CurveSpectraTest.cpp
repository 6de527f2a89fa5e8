#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <arithmetic/SampleSpectra.h>
#include <tslbl/arithmetic/CurveSpectra.h>
#include <tslbl/arithmetic/SpectrumSums.h>
#include <tslbl/closed/common/Text.h>
#include <memory>
#include <random>
#include <stdexcept>

using namespace TslBL;
using namespace tests;
using testing::ElementsAre;

namespace {

using Values = std::vector<double>;
using Ids = std::vector<std::uint32_t>;

// Spectra A, B and C, and the curves made of them.
class Workbench {
 public:
  Workbench() {
    Add(L"a", 100, {1, 2, 3}, {1, 2}, {11, 12});
    Add(L"b", 100, {3, 3, 3}, {2, 3}, {22, 23});
    Add(L"c", 100.1, {10, 20}, {4}, {14});
  }
  ~Workbench() {
    for (const Spectrum* curve : curves_) delete curve;
  }

  bool Make(const std::vector<std::wstring>& definitions) {
    std::vector<Spectrum*> ranges;
    for (Spectrum& range : ranges_) ranges.push_back(&range);
    return GenerateCurveSpectra(ranges, definitions, curves_, error_);
  }
  const Spectrum& Made(const std::wstring& definition) {
    EXPECT_TRUE(Make({definition})) << Error();
    return *curves_.back();
  }
  std::vector<Spectrum>& Ranges() { return ranges_; }
  const std::vector<Spectrum*>& Curves() const { return curves_; }
  std::string Error() const { return TslCommon::ToUtf8(error_); }

 private:
  void Add(const wchar_t* name, double from, const Values& y, const Ids& ids, const Ids& tunes) {
    ranges_.push_back(StateSpectrumOf(from, 1, y));
    ranges_.back().name = name;
    ranges_.back().sourceListA = ids;
    ranges_.back().sourceListB = tunes;
  }

  std::vector<Spectrum> ranges_;
  std::vector<Spectrum*> curves_;
  std::wstring error_;
};

void ExpectNear(const Values& values, const Values& expected) {
  ASSERT_EQ(values.size(), expected.size());
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_NEAR(values[i], expected[i], 1e-9) << i;
}

std::string ErrorOf(const std::vector<std::wstring>& definitions) {
  Workbench bench;
  EXPECT_FALSE(bench.Make(definitions));
  return bench.Error();
}

// The sum of both, without one, on the grid that they share.
TEST(GenerateCurveSpectra, TakingAwayWhatWasAddedLeavesWhatWasThere) {
  std::mt19937 random(11);
  std::uniform_int_distribution<int> count(0, 100000);
  for (int run = 0; run < 20; ++run) {
    Values a(200), b(200);
    for (double& y : a) y = count(random);
    for (double& y : b) y = count(random);
    Spectrum both = StateSpectrumOf(100, 1, a);
    Spectrum added = StateSpectrumOf(100, 1, b);
    AddSingleStateSpectra(&both, &added);
    std::vector<Spectrum*> curves;
    std::wstring error;
    ASSERT_TRUE(GenerateCurveSpectra({&both, &added}, {L"A-B"}, curves, error));
    const std::unique_ptr<const Spectrum> left(curves.at(0));
    ASSERT_EQ(left->yAxis.size(), a.size());
    for (std::size_t i = 0; i < a.size(); ++i) EXPECT_NEAR(left->yAxis[i], a[i], 1e-5) << i;
  }
}

}  // namespace

TEST(GenerateCurveSpectra, OfOneSpectrumIsItsCopy) {
  Workbench bench;
  Spectrum expected = bench.Ranges()[0];
  expected.tic = 6;
  EXPECT_EQ(bench.Made(L"A"), expected);
}

TEST(GenerateCurveSpectra, AveragesWhatHasAPlus) {
  Workbench bench;
  ExpectNear(bench.Made(L"A+B").yAxis, {2, 2.5, 3});
  ExpectNear(bench.Made(L"AB").yAxis, {2, 2.5, 3});
  ExpectNear(bench.Made(L"+aBc").yAxis, {2, 5, 26.0 / 3});
}

TEST(GenerateCurveSpectra, TakesTheAverageOfTheRestAwayAndStaysAboveZero) {
  Workbench bench;
  ExpectNear(bench.Made(L"B-A").yAxis, {2, 1, 0});
  ExpectNear(bench.Made(L"A-B").yAxis, {0, 0, 0});
  ExpectNear(bench.Made(L"C-AB").yAxis, {0, 7.5, 17});
  ExpectNear(bench.Made(L"A-A").yAxis, {0, 0, 0});
  ExpectNear(bench.Made(L"A-C").yAxis, {1, 0, 0});
  EXPECT_EQ(bench.Curves().back()->status, Curve::STATUS_X | Curve::STATUS_Y);
}

TEST(GenerateCurveSpectra, ASpectrumAveragedWithItselfIsItselfOnANewGrid) {
  Workbench bench;
  const Spectrum& twice = bench.Made(L"A+A");
  ExpectNear(twice.yAxis, bench.Ranges()[0].yAxis);
  ExpectNear(twice.xAxis, bench.Ranges()[0].xAxis);
  EXPECT_EQ(twice.stepMDAC, 1.0);
}

TEST(GenerateCurveSpectra, AddingAndTakingAwayLeavesTheSpectrumOnACommonGrid) {
  Workbench bench;
  ExpectNear(bench.Made(L"A+B").yAxis, {2, 2.5, 3});
  // Twice the average of both, without B, is A.
  Spectrum sum = *bench.Curves().back();
  for (double& y : sum.yAxis) y *= 2.0;
  std::vector<Spectrum*> made;
  std::wstring error;
  ASSERT_TRUE(GenerateCurveSpectra({&sum, &bench.Ranges()[1]}, {L"A-B"}, made, error));
  const std::unique_ptr<Spectrum> owned(made.at(0));
  ExpectNear(owned->yAxis, bench.Ranges()[0].yAxis);
}

TEST(GenerateCurveSpectra, UsesCurvesMadeBefore) {
  Workbench bench;
  ASSERT_TRUE(bench.Make({L"A+B", L"1-A", L"12"}));
  ExpectNear(bench.Curves()[1]->yAxis, {1, 0.5, 0});
  ExpectNear(bench.Curves()[2]->yAxis, {1.5, 1.5, 1.5});
}

TEST(GenerateCurveSpectra, UsesCurvesOfAnEarlierCallToo) {
  Workbench bench;
  ASSERT_TRUE(bench.Make({L"A+B"}));
  ExpectNear(bench.Made(L"1").yAxis, {2, 2.5, 3});
}

TEST(GenerateCurveSpectra, TellsWhatASpectrumIsMadeOf) {
  Workbench bench;
  EXPECT_EQ(bench.Made(L"A+B-C").name, L"a + b - c");
  EXPECT_EQ(bench.Made(L"AB-c").name, L"ab - c");
  EXPECT_EQ(bench.Made(L"+1").name, L" + a + b - c");
}

TEST(GenerateCurveSpectra, HasEachSourceOnceWithItsTune) {
  Workbench bench;
  EXPECT_THAT(bench.Made(L"A+B-C").sourceListA, ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(bench.Curves().back()->sourceListB, ElementsAre(11, 12, 23, 14));
  EXPECT_THAT(bench.Made(L"-C+B").sourceListA, ElementsAre(2, 3, 4)) << "what is added comes first";
}

TEST(GenerateCurveSpectra, ASourceWithoutATuneHasTuneZero) {
  Workbench bench;
  bench.Ranges()[1].sourceListB.clear();
  EXPECT_THAT(bench.Made(L"A+B").sourceListB, ElementsAre(11, 12, 0));
}

TEST(GenerateCurveSpectra, SumsItsAmplitudes) {
  Workbench bench;
  EXPECT_EQ(bench.Made(L"B").tic, 9.0);
  EXPECT_NEAR(bench.Made(L"A+B").tic, 7.5, 1e-9);
}

TEST(GenerateCurveSpectra, NamesTheDefinitionAndWhatIsWrongWithIt) {
  EXPECT_EQ(ErrorOf({L"D"}), "Curve definition 1 contains an invalid range letter.");
  EXPECT_EQ(ErrorOf({L"A", L"2"}), "Curve definition 2 contains an invalid curve number.");
  EXPECT_EQ(ErrorOf({L"1"}), "Curve definition 1 contains an invalid curve number.");
  for (const wchar_t* definition : {L"A B", L"0", L"9", L"k", L"*"})
    EXPECT_EQ(ErrorOf({L"A", L"A", definition}), "Curve definition 3 contains an invalid character.");
  for (const wchar_t* definition : {L"", L"-A", L"+", L"-A-B"})
    EXPECT_EQ(ErrorOf({definition}), "Curve definition 1 results in an empty spectrum.");
}

TEST(GenerateCurveSpectra, KeepsWhatWasMadeBeforeAFailure) {
  Workbench bench;
  EXPECT_FALSE(bench.Make({L"A", L"B", L"?", L"C"}));
  EXPECT_EQ(bench.Curves().size(), 2u);
  bench.Ranges()[2].stepMDAC = 0.0;
  EXPECT_THROW(bench.Make({L"B", L"A+C"}), std::runtime_error);
  EXPECT_EQ(bench.Curves().size(), 3u);
}

TEST(GenerateCurveSpectra, WithoutDefinitionsMakesNothing) {
  Workbench bench;
  EXPECT_TRUE(bench.Make({}));
  EXPECT_TRUE(bench.Curves().empty());
}
