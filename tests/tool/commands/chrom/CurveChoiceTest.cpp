#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/commands/chrom/CurveChoice.h>
#include <tool/frame/UsageError.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslTool::CurveChoice;
using Texts = std::vector<std::string>;

std::string ErrorOf(const Texts& ranges, const Texts& definitions) {
  try {
    CurveChoice choice(ranges, definitions);
  } catch (const TslTool::UsageError& error) {
    return error.what();
  }
  return "";
}

std::vector<double> PointsOf(const Texts& ranges, const Texts& definitions,
                             const std::vector<double>& values) {
  std::vector<double> points;
  CurveChoice(ranges, definitions).Points(values, points);
  return points;
}

TEST(CurveChoice, HasACurveForEachRangeWithoutDefinitions) {
  const CurveChoice choice({"A=500-501", "c=600-601.5"}, {});
  ASSERT_EQ(choice.Count(), 2u);
  EXPECT_EQ(choice.Name(1), "C");
  EXPECT_EQ(choice.Title(1), "600 to 601.5");
}

TEST(CurveChoice, GivesARangeWithoutALetterTheFirstThatIsFree) {
  const CurveChoice choice({"A=500-501", "600-601"}, {});
  EXPECT_EQ(choice.Ranges()[1].letter, 'B');
}

TEST(CurveChoice, TakesACentreAndWhatLiesToBothSides) {
  const CurveChoice choice({"A=500.5+-0.5"}, {});
  EXPECT_EQ(choice.Ranges()[0].from, 500.0);
  EXPECT_EQ(choice.Ranges()[0].to, 501.0);
}

TEST(CurveChoice, KnowsRangesByTheirLettersInAnyOrder) {
  EXPECT_THAT(PointsOf({"C=1-2", "A=3-4"}, {"C-a", "A"}, {5.0, 2.0}), ElementsAre(3.0, 2.0));
}

TEST(CurveChoice, KnowsEarlierDefinitionsByTheirNumbers) {
  EXPECT_THAT(PointsOf({"A=1-2", "B=3-4"}, {"A+B", "1-B"}, {5.0, 2.0}), ElementsAre(7.0, 5.0));
}

TEST(CurveChoice, CutsCurvesAtZero) {
  EXPECT_THAT(PointsOf({"A=1-2", "B=3-4"}, {"A-B"}, {2.0, 5.0}), ElementsAre(0.0));
}

TEST(CurveChoice, TellsHowOftenARangeCounts) {
  const CurveChoice choice({"A=1-2", "B=3-4"}, {"A-B", "1+A", "2-1"});
  EXPECT_THAT(choice.Weights(1), ElementsAre(2.0, -1.0));
  EXPECT_THAT(choice.Weights(2), ElementsAre(1.0, 0.0));
}

TEST(CurveChoice, NamesWhatARangeMeansInTheTitle) {
  EXPECT_EQ(CurveChoice({"A=1-2", "B=3-4"}, {"A-B"}).Title(0), "1 to 2-3 to 4");
}

struct Refused {
  Texts ranges, definitions;
  const char* reason;
};

TEST(CurveChoice, RefusesWhatIsNoChoice) {
  const Refused cases[] = {
      {{"A=501-500"}, {}, "--range: \"501-500\" ends before it begins"},
      {{"A=x"}, {}, "--range: \"x\" is not a number"},
      {{"=1-2"}, {}, "there is no letter before the ="},
      {{"A=5+--1"}, {}, "what stands behind +- cannot be below 0"},
      {{"A=1-2", "a=3-4"}, {}, "--range: \"a=3-4\": there is a range A already"},
      {{"K=1-2"}, {}, "\"K\" is not a letter from A to J"},
      {{"lactose=1-2"}, {}, "\"lactose\" is not a letter from A to J"},
      {{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}, {}, "letters for ten ranges only"},
      {{}, {"A"}, "a definition is made of ranges"},
      {{"A=1-2"}, {"A-B"}, "--curve: \"A-B\": Curve definition 1 contains an invalid range letter."},
      {{"A=1-2"}, {"A", "A*2"}, "--curve: \"A*2\": Curve definition 2 contains an invalid character."},
      {{"A=1-2"}, {"A+1"}, "--curve: \"A+1\": Curve definition 1 contains an invalid curve number."},
      {{"A=1-2"}, {"A", "A"}, "--curve: \"A\" is given twice"},
  };
  for (const Refused& each : cases)
    EXPECT_THAT(ErrorOf(each.ranges, each.definitions), HasSubstr(each.reason));
}

TEST(CurveChoice, RefusesSignsThatDangleOrStandTwiceOrAreMissing) {
  for (const char* text : {"A-", "+A", "A--B", "AB", "-A", "+", "A-B+", "A+BC", "-"})
    EXPECT_THAT(
        ErrorOf({"A=1-2", "B=3-4", "C=5-6"}, {text}),
        testing::StartsWith(std::string("--curve: \"") + text + "\": letters or numbers with one + or -"));
  EXPECT_EQ(ErrorOf({"A=1-2", "B=3-4"}, {"A-b", "1+A-B"}), "");
}

}  // namespace
}  // namespace tests
