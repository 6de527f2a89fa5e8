// Tests: ExtractedCurves.cpp, CurveDefinition.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tslbl/chromatogram/ExtractedCurves.h>
#include <tslbl/closed/common/Text.h>
#include <cmath>

using namespace TslBL;
using testing::ElementsAre;

namespace {

using Values = std::vector<double>;

// m/z 100, 101 ... 109 with amplitudes 1, 2, 4 ... 512.
Spectrum TenPoints() {
  Spectrum s;
  for (int i = 0; i < 10; ++i) {
    s.xAxis.push_back(100.0 + i);
    s.yAxis.push_back(std::ldexp(1.0, i));
  }
  return s;
}

MZRange Part(double start, double end) { return {MZRange::Partial, start, end}; }

Values Means(const std::vector<MZRange>& ranges) { return CalcSpectrumEICRanges(TenPoints(), ranges); }

struct Points {
  bool ok;
  Values points;
  std::string error;
};

Points Calculate(const Values& ranges, const std::vector<std::wstring>& definitions) {
  Points result;
  std::wstring error;
  result.ok = CalcEICPoints(ranges, definitions, result.points, error);
  result.error = TslCommon::ToUtf8(error);
  return result;
}

const Values kRanges = {1, 10, 100, 1000, 10000};

double PointOf(const std::wstring& definition) {
  const Points result = Calculate(kRanges, {definition});
  EXPECT_TRUE(result.ok) << result.error;
  return result.points.at(0);
}

std::string ErrorOf(const Values& ranges, const std::vector<std::wstring>& definitions) {
  const Points result = Calculate(ranges, definitions);
  EXPECT_FALSE(result.ok);
  return result.error;
}

}  // namespace

TEST(CalcSpectrumEICRanges, IsTheMeanOfThePointsWithBothEnds) {
  EXPECT_THAT(Means({Part(101, 103)}), ElementsAre(14.0 / 3));
  EXPECT_THAT(Means({Part(100.5, 102.5)}), ElementsAre(3.0));
  EXPECT_THAT(Means({Part(104, 104)}), ElementsAre(16.0));
  EXPECT_THAT(Means({Part(0, 1000)}), ElementsAre(102.3));
}

TEST(CalcSpectrumEICRanges, TakesTheLimitsOfAFullRangeToo) {
  EXPECT_THAT(Means({MZRange()}), ElementsAre(102.3));
  EXPECT_THAT(Means({{MZRange::Full, 101, 102}}), ElementsAre(3.0));
}

TEST(CalcSpectrumEICRanges, ARangeBesideTheAxisGivesNoValueAndLaterOnesMoveUp) {
  EXPECT_THAT(Means({Part(50, 99), Part(101, 101), Part(110, 120), Part(103, 103)}), ElementsAre(2, 8, 0, 0));
}

TEST(CalcSpectrumEICRanges, ARangeThatTouchesAnEndOfTheAxisIsNotBesideIt) {
  EXPECT_THAT(Means({Part(50, 100), Part(109, 120)}), ElementsAre(1, 512));
}

TEST(CalcSpectrumEICRanges, BetweenTwoPointsIsNaN) {
  const Values means = Means({Part(101.2, 101.8), Part(102, 102)});
  EXPECT_TRUE(std::isnan(means[0]));
  EXPECT_EQ(means[1], 4.0);
  EXPECT_TRUE(std::isnan(Means({Part(105, 103)})[0])) << "the wrong way round";
}

TEST(CalcSpectrumEICRanges, OfAnEmptySpectrumIsZero) {
  EXPECT_THAT(CalcSpectrumEICRanges(Spectrum(), {MZRange(), Part(1, 2)}), ElementsAre(0, 0));
  EXPECT_THAT(CalcSpectrumEICRanges(Spectrum(), {}), ElementsAre());
}

TEST(CalcSpectrumEICRanges, OfAxesThatDifferInLengthTakesWhatBothHave) {
  Spectrum s = TenPoints();
  s.yAxis.resize(3);
  EXPECT_THAT(CalcSpectrumEICRanges(s, {Part(101, 105)}), ElementsAre(3.0));
  EXPECT_TRUE(std::isnan(CalcSpectrumEICRanges(s, {Part(105, 106)})[0]));
}

TEST(CalcEICPoints, AddsAndSubtractsRanges) {
  EXPECT_EQ(PointOf(L"A"), 1);
  EXPECT_EQ(PointOf(L"c"), 100);
  EXPECT_EQ(PointOf(L"A+B"), 11);
  EXPECT_EQ(PointOf(L"C-B+A"), 91);
  EXPECT_EQ(PointOf(L"AB"), 11);
}

TEST(CalcEICPoints, ASignHoldsUpToTheNextOne) {
  EXPECT_EQ(PointOf(L"D-BC"), 890);
  EXPECT_EQ(PointOf(L"D-BC+A"), 891);
  EXPECT_EQ(PointOf(L"D--B"), 990);
  EXPECT_EQ(PointOf(L"D-+B"), 1010);
  EXPECT_EQ(PointOf(L"+A-"), 1);
}

TEST(CalcEICPoints, AnEmptyDefinitionIsZero) {
  EXPECT_EQ(PointOf(L""), 0);
  EXPECT_EQ(PointOf(L"+-"), 0);
}

TEST(CalcEICPoints, IsNeverBelowZeroAndLaterDefinitionsSeeThat) {
  EXPECT_THAT(Calculate(kRanges, {L"A-B", L"1+C"}).points, ElementsAre(0, 100));
}

TEST(CalcEICPoints, UsesEarlierCurves) {
  EXPECT_THAT(Calculate(kRanges, {L"A", L"1+B", L"2-1", L"321"}).points, ElementsAre(1, 11, 10, 22));
  const std::vector<std::wstring> nine = {L"A", L"1+1", L"2+2", L"3+3", L"4+4", L"5+5", L"6+6", L"7+7", L"8"};
  EXPECT_EQ(Calculate(kRanges, nine).points.back(), 128);
}

TEST(CalcEICPoints, ReachesTheTenthRange) {
  const Values ten = {0, 0, 0, 0, 0, 0, 0, 0, 0, 42};
  EXPECT_THAT(Calculate(ten, {L"J", L"j"}).points, ElementsAre(42, 42));
}

TEST(CalcEICPoints, WithoutDefinitionsHasNoPoints) {
  const Points result = Calculate(kRanges, {});
  EXPECT_TRUE(result.ok);
  EXPECT_THAT(result.points, ElementsAre());
}

TEST(CalcEICPoints, NamesTheDefinitionAndWhatIsWrongWithIt) {
  EXPECT_EQ(ErrorOf(kRanges, {L"A+1"}), "Curve definition 1 contains an invalid curve number.");
  EXPECT_EQ(ErrorOf(kRanges, {L"A", L"2"}), "Curve definition 2 contains an invalid curve number.");
  EXPECT_EQ(ErrorOf({1}, {L"B"}), "Curve definition 1 contains an invalid range letter.");
  EXPECT_EQ(ErrorOf({}, {L"", L"", L"a"}), "Curve definition 3 contains an invalid range letter.");
  for (const wchar_t* definition : {L"k", L"K", L"0", L"9", L" A", L"A + B", L"A*B", L"\x3b1"})
    EXPECT_EQ(ErrorOf(kRanges, {definition}), "Curve definition 1 contains an invalid character.");
}

TEST(CalcEICPoints, StopsAtTheFirstFailureAndKeepsWhatIsBefore) {
  const Points result = Calculate(kRanges, {L"B", L"C+A?", L"A"});
  EXPECT_FALSE(result.ok);
  EXPECT_THAT(result.points, ElementsAre(10, 101, 0));
}

TEST(CalcEICPoints, ReplacesWhatThePointsHeld) {
  Values points = {7, 7, 7};
  std::wstring error = L"as it was";
  EXPECT_TRUE(CalcEICPoints({1}, {L"A", L""}, points, error));
  EXPECT_THAT(points, ElementsAre(1, 0));
  EXPECT_EQ(error, L"as it was");
}

TEST(CalcEICPoints, CallsTheTenthDefinitionByTheCharacterBehindNine) {
  std::vector<std::wstring> definitions(10, L"");
  definitions[9] = L"?";
  EXPECT_EQ(ErrorOf({}, definitions), "Curve definition : contains an invalid character.");
}
