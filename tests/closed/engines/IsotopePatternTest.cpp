#include <gtest/gtest.h>
#include <tslbl/closed/engines/Elements.h>
#include <tslbl/closed/engines/IsotopePattern.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

namespace TslMath {
namespace {

constexpr const char* kAveragine = "C117 H184 N32 O35 S1";

struct Place {
  int offset;
  double probability, mass;
};

struct Molecule {
  std::string formula;
  double monoMass;
  std::vector<Place> places;
};

// Written by tests/oracles/isotope_pattern.py.
std::vector<Molecule> FullPatterns() {
  std::ifstream in(std::string(TSLBL_TEST_DATA) + "/isotope_pattern.txt");
  std::vector<Molecule> molecules;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("@ ")) {
      const std::size_t last = line.rfind(' ');
      molecules.push_back({line.substr(2, last - 2), std::stod(line.substr(last)), {}});
    } else {
      Place place{};
      std::istringstream(line) >> place.offset >> place.probability >> place.mass;
      molecules.back().places.push_back(place);
    }
  }
  return molecules;
}

std::vector<int> Percent(const IsotopePattern& pattern, std::size_t places) {
  std::vector<int> percent;
  const double top = pattern.probability[pattern.Top()];
  for (std::size_t i = 0; i < places; ++i) {
    percent.push_back(static_cast<int>(std::lround(100 * pattern.probability.at(i) / top)));
  }
  return percent;
}

IsotopePattern PatternOf(const std::string& formula) { return MakeIsotopePattern(ParseFormula(formula)); }

IsotopePattern AveragineAt(double mass) {
  return MakeIsotopePattern(ScaleToMass(ParseFormula(kAveragine), mass));
}

std::size_t TopOffsetAt(double mass) {
  const IsotopePattern pattern = AveragineAt(mass);
  return pattern.Top() + static_cast<std::size_t>(pattern.firstOffset);
}

TEST(IsotopePattern, AgreesWithTheFullProduct) {
  const auto molecules = FullPatterns();
  ASSERT_EQ(molecules.size(), 14u);
  for (const auto& [formula, monoMass, places] : molecules) {
    const IsotopePattern pattern = PatternOf(formula);
    EXPECT_NEAR(pattern.monoMass, monoMass, 1e-8) << formula;
    ASSERT_FALSE(places.empty());
    for (const auto& [offset, probability, mass] : places) {
      const auto i = static_cast<std::size_t>(offset - pattern.firstOffset);
      ASSERT_LT(i, pattern.probability.size()) << formula;
      EXPECT_NEAR(pattern.probability[i], probability, 1e-5 * probability) << formula << " offset " << offset;
      EXPECT_NEAR(pattern.mass[i], mass, 1e-7) << formula << " offset " << offset;
    }
  }
}

TEST(IsotopePattern, WithoutThresholdsIsTheFullProduct) {
  for (const auto& [formula, monoMass, places] : FullPatterns()) {
    if (monoMass > 10000) continue;
    const IsotopePattern pattern = MakeIsotopePattern(ParseFormula(formula), {.atom = 0, .molecule = 0});
    for (const auto& [offset, probability, mass] : places) {
      const auto i = static_cast<std::size_t>(offset - pattern.firstOffset);
      EXPECT_NEAR(pattern.probability[i], probability, 1e-11 * probability)
          << formula << " offset " << offset;
      EXPECT_NEAR(pattern.mass[i], mass, 1e-9) << formula << " offset " << offset;
    }
  }
}

// The full product of a million Da has 155 000 places.
TEST(IsotopePattern, WithoutThresholdsEndsWhereASumOfDoublesTellsNothing) {
  const IsotopePattern pattern = MakeIsotopePattern(ScaleToMass(ParseFormula(kAveragine), 1e6), {0, 0});
  const double top = pattern.probability[pattern.Top()];
  EXPECT_LT(pattern.probability.front(), 1e-25 * top);
  EXPECT_LT(pattern.probability.back(), 1e-25 * top);
  EXPECT_LT(pattern.probability.size(), 1000U);
}

TEST(IsotopePattern, SumsToOne) {
  for (const double mass : {20.0, 500.0, 2000.0, 20000.0, 60000.0}) {
    const IsotopePattern pattern = AveragineAt(mass);
    const double sum = std::accumulate(pattern.probability.begin(), pattern.probability.end(), 0.0);
    EXPECT_NEAR(sum, 1, 1e-12) << mass;
  }
}

TEST(IsotopePattern, HasTheAverageMassOfItsFormula) {
  for (const double mass : {500.0, 1000.0, 5000.0, 20000.0, 60000.0}) {
    const Composition composition = ScaleToMass(ParseFormula(kAveragine), mass);
    const IsotopePattern pattern = MakeIsotopePattern(composition);
    const double average = AverageMass(composition);
    EXPECT_NEAR(pattern.monoMass + pattern.Mean(), average, 1e-6 * average) << mass;
  }
}

// A binomial distribution: 60 atoms, 1.07 % of them carbon 13, gives 100 : 64.9 : 20.7 : 4.3.
TEST(IsotopePattern, GivesThePatternOfFullerene) {
  EXPECT_EQ(Percent(PatternOf("C60"), 4), (std::vector<int>{100, 65, 21, 4}));
}

TEST(IsotopePattern, GivesTheThreeLinesOfDibromoethane) {
  const IsotopePattern pattern = PatternOf("C2H4Br2");
  EXPECT_NEAR(pattern.probability[0] / pattern.probability[2], 0.5069 / (2 * 0.4931), 0.001);
  EXPECT_NEAR(pattern.probability[4] / pattern.probability[2], 0.4931 / (2 * 0.5069), 0.001);
}

TEST(IsotopePattern, BeginsBelowZeroWhereAnElementHasLighterIsotopes) {
  const IsotopePattern ferrocene = PatternOf("C10H10Fe");
  EXPECT_EQ(ferrocene.firstOffset, -2);
  EXPECT_EQ(ferrocene.Top(), 2u);
  EXPECT_NEAR(ferrocene.mass[0], 53.93960899 - 55.93493633, 1e-9);
}

TEST(IsotopePattern, LeavesAGapWhereNoIsotopeIs) {
  const IsotopePattern chlorine = PatternOf("Cl");
  EXPECT_EQ(chlorine.probability, (std::vector<double>{0.7576, 0, 0.2424}));
  EXPECT_EQ(chlorine.mass[1], 1);
}

TEST(IsotopePattern, FollowsTheAverageProtein) {
  EXPECT_NEAR(AveragineAt(1000).probability[1] / AveragineAt(1000).probability[0], 0.536, 0.0005);
  EXPECT_NEAR(AveragineAt(2000).probability[1] / AveragineAt(2000).probability[0], 1.084, 0.0005);
  EXPECT_EQ(TopOffsetAt(2000), 1u);
  EXPECT_EQ(TopOffsetAt(5000), 3u);
  EXPECT_EQ(TopOffsetAt(20000), 12u);
}

TEST(IsotopePattern, LeavesOutAMonoisotopicFormThatIsTooRare) {
  EXPECT_EQ(AveragineAt(60000).firstOffset, 12);
}

TEST(IsotopePattern, LeavesOutRareIsotopes) {
  const IsotopePattern pattern = MakeIsotopePattern(ParseFormula("O"), {.atom = 0.001, .molecule = 0});
  EXPECT_EQ(pattern.probability[1], 0);
  EXPECT_NEAR(pattern.probability[2], 0.00205 / (0.99757 + 0.00205), 1e-15);
}

TEST(IsotopePattern, KeepsTheTopWhateverTheThresholds) {
  const IsotopePattern pattern = MakeIsotopePattern(ParseFormula("C200"), {.atom = 0, .molecule = 1});
  EXPECT_EQ(pattern.probability, std::vector<double>{1});
  EXPECT_EQ(pattern.firstOffset, 2);
  EXPECT_EQ(MakeIsotopePattern(ParseFormula("C200"), {.atom = 1, .molecule = 0}).probability,
            std::vector<double>{1});
}

TEST(IsotopePattern, OfNothingIsOnePlace) {
  const IsotopePattern pattern = MakeIsotopePattern(Composition());
  EXPECT_EQ(pattern.probability, std::vector<double>{1});
  EXPECT_EQ(pattern.monoMass, 0);
}

TEST(IsotopePatternCache, ServesABinWithThePatternOfItsMiddle) {
  IsotopePatternCache cache(ParseFormula(kAveragine), {});
  const IsotopePattern& pattern = cache.At(2000);
  EXPECT_EQ(&cache.At(2001), &pattern);
  EXPECT_NE(&cache.At(2020), &pattern);
  EXPECT_NEAR(pattern.monoMass, 2000, 0.004 * 2000);
}

TEST(IsotopePatternCache, GivesTheSameWhateverWasAskedBefore) {
  IsotopePatternCache one(ParseFormula(kAveragine), {}), other(ParseFormula(kAveragine), {});
  one.At(2003);
  EXPECT_EQ(one.At(2000).probability, other.At(2000).probability);
}

TEST(IsotopePatternCache, RefusesAMassThatIsNone) {
  IsotopePatternCache cache(ParseFormula(kAveragine), {});
  for (const double mass :
       {0.0, -5.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    EXPECT_THROW(cache.At(mass), std::invalid_argument) << mass;
  }
}

}  // namespace
}  // namespace TslMath
