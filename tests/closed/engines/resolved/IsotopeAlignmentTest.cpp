#include <tslbl/closed/engines/resolved/IsotopeAlignment.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace TslMath;

namespace {

constexpr double kMass = 14000;

const VisiblePattern& Average() {
  static VisiblePatterns patterns(ParseFormula("C117 H184 N32 O35 S1"), {});
  return patterns.At(std::log(kMass));
}

// The average pattern, moved by so many isotopes up, straight lines between them.
SeenState Moved(double shift, double top = 1000, double error = 1) {
  const VisiblePattern& pattern = Average();
  const double scale = top / pattern.probability[pattern.top];
  const auto below = static_cast<std::int32_t>(std::floor(shift));
  SeenState state;
  for (std::int32_t k = pattern.firstIsotope - 3;
       k < pattern.firstIsotope + 3 + static_cast<int>(pattern.Size()); ++k)
    state.push_back({k,
                     scale * std::lerp(ProbabilityOf(pattern, k - below),
                                       ProbabilityOf(pattern, k - below - 1), shift - below),
                     error});
  return state;
}

SeenState WithNoise(SeenState state, std::mt19937_64& random) {
  for (SeenIsotope& seen : state)
    seen.intensity = std::max(0.0, seen.intensity + seen.error * std::normal_distribution<double>()(random));
  return state;
}

TEST(PlaceOfPattern, IsWhereThePatternStands) {
  for (const double shift : {-2.0, -1.0, -0.4, 0.0, 0.3, 1.0, 1.7, 2.0}) {
    const SeenState states[] = {Moved(shift)};
    EXPECT_NEAR(PlaceOfPattern(states, Average()).shift, shift, 0.02) << shift;
  }
}

TEST(PlaceOfPattern, TakesEachChargeWithAnIntensityOfItsOwn) {
  const SeenState states[] = {Moved(1, 1000), Moved(1, 10), Moved(1, 300)};
  EXPECT_NEAR(PlaceOfPattern(states, Average()).shift, 1, 0.02);
}

TEST(PlaceOfPattern, FollowsTheChargesThatTellMore) {
  const SeenState states[] = {Moved(1, 1000, 10), Moved(0, 10, 10)};
  EXPECT_NEAR(PlaceOfPattern(states, Average()).shift, 1, 0.05);
}

TEST(PlaceOfPattern, IsAsFarOffAsItsErrorSays) {
  std::mt19937_64 random(3);
  double squares = 0;
  constexpr int kTrials = 500;
  for (int k = 0; k < kTrials; ++k) {
    const SeenState states[] = {WithNoise(Moved(0, 10), random), WithNoise(Moved(0, 20), random)};
    const PatternPlace place = PlaceOfPattern(states, Average());
    squares += std::pow(place.shift / place.error, 2);
  }
  EXPECT_NEAR(std::sqrt(squares / kTrials), 1, 0.15);
}

TEST(PlaceOfPattern, IsLessSureWhereIsotopesScatterByMoreThanTheirErrors) {
  SeenState state = Moved(0, 1000, 1);
  const double alone = PlaceOfPattern({&state, 1}, Average()).error;
  for (std::size_t k = 0; k < state.size(); k += 2) state[k].intensity *= 1.1;
  EXPECT_GT(PlaceOfPattern({&state, 1}, Average()).error, 3 * alone);
}

TEST(PlaceOfPattern, IsNotToldByTwoIsotopes) {
  const std::vector<SeenState> states = {{{8, 100, 1}, {9, 90, 1}}};
  EXPECT_EQ(PlaceOfPattern(states, Average()).shift, 0);
  EXPECT_TRUE(std::isinf(PlaceOfPattern(states, Average()).error));
  EXPECT_TRUE(std::isinf(PlaceOfPattern({}, Average()).error));
}

TEST(ScaleOf, IsTheIntensityOfTheWholePattern) {
  const double scale = 1000 / Average().probability[Average().top];
  EXPECT_NEAR(ScaleOf(Moved(1), Average(), 1), scale, 1e-9 * scale);
}

TEST(CountChances, AreBestForTheNearestCount) {
  for (const auto& [place, best] : {std::pair{-1.8, -2}, {-0.4, 0}, {0.0, 0}, {0.4, 0}, {0.6, 1}, {2.2, 2}})
    EXPECT_EQ(CountChances({place, 0.1}, kMass, {}).Best(), best) << place;
}

// An error of 0.1774 isotopes by the composition alone: that another isotope is the right one has a chance of
// 2 exp(-1 / (2 0.1774^2)).
TEST(CountChances, LeaveWhatProteinsDifferBy) {
  const double scatter = 0.0015 * std::sqrt(kMass);
  EXPECT_NEAR(CountChances({0, 0}, kMass, {}).ErrorOf(0), std::sqrt(2 * std::exp(-0.5 / (scatter * scatter))),
              1e-6);
  EXPECT_NEAR(CountChances({0.5, 0}, kMass, {}).ErrorOf(0), std::sqrt(0.5), 1e-3);
  EXPECT_LT(CountChances({0.5, 0}, kMass, {}).ErrorOf(0), CountChances({0.6, 0}, kMass, {}).ErrorOf(0));
}

TEST(CountChances, FollowAnotherFormOfTheProtein) {
  const PatternPlace kin{-0.4, 0.05};
  EXPECT_EQ(CountChances({0.45, 0.1}, kMass, {}).Best(), 0);
  EXPECT_EQ(CountChances({0.45, 0.1}, kMass, kin).Best(), 1);
  EXPECT_EQ(CountChances({-0.4, 0.1}, kMass, kin).Best(), 0);
  EXPECT_LT(CountChances({-0.4, 0.1}, kMass, kin).ErrorOf(0),
            CountChances({-0.4, 0.1}, kMass, {}).ErrorOf(0));
}

// Half an isotope from where the other form has it, which it cannot be.
TEST(CountChances, DoNotFollowOneThatIsNone) {
  EXPECT_EQ(CountChances({0.0, 0.02}, kMass, PatternPlace{-0.4, 0.02}).Best(), 0);
}

TEST(CountChances, AreThoseOfAGuessWhereNothingTells) {
  const CountChances chances({0, std::numeric_limits<double>::infinity()}, kMass, {});
  EXPECT_EQ(chances.Best(), 0);
  EXPECT_NEAR(chances.ErrorOf(0), 1, 0.05);
}

TEST(CountChances, AreNumbersHoweverSureThePlace) {
  const CountChances chances({0.49, 1e-12}, 1e-12, PatternPlace{0.3, 1e-12});
  EXPECT_EQ(chances.Best(), 0);
  EXPECT_NEAR(chances.ErrorOf(0), 0, 1e-9);
}

}  // namespace
