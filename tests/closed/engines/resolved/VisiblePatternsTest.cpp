#include <tslbl/closed/engines/resolved/VisiblePatterns.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace TslMath;

namespace {

TEST(VisiblePatterns, HoldWhatIsAHundredthOfTheTop) {
  const Composition unit = ParseFormula("C117 H184 N32 O35 S1");
  VisiblePatterns patterns(unit, {});
  for (const double mass : {300.0, 1500.0, 20000.0}) {
    const VisiblePattern& seen = patterns.At(std::log(mass));
    const IsotopePattern full = MakeIsotopePattern(ScaleToMass(unit, mass));
    const double least = 0.01 * seen.probability[seen.top];
    for (const double probability : seen.probability) EXPECT_GE(probability, least);
    for (std::size_t k = 0; k < full.probability.size(); ++k) {
      const std::int32_t place = full.firstOffset + static_cast<std::int32_t>(k) - seen.firstIsotope;
      if (place < 0 || place >= static_cast<std::int32_t>(seen.Size())) {
        EXPECT_LT(full.probability[k], 1.1 * least);
        continue;
      }
      EXPECT_NEAR(full.mass[k], seen.mass[static_cast<std::size_t>(place)], 0.02);
    }
  }
}

TEST(VisiblePatterns, AreTheSameWithoutAThresholdOfTheMolecule) {
  const Composition unit = ParseFormula("C117 H184 N32 O35 S1");
  VisiblePatterns all(unit, {1e-6, 0});
  VisiblePatterns most(unit, {1e-6, 1e-6});
  for (const double mass : {300.0, 20000.0, 1e6}) {
    const VisiblePattern& expected = all.At(std::log(mass));
    const VisiblePattern& pattern = most.At(std::log(mass));
    EXPECT_EQ(pattern.firstIsotope, expected.firstIsotope) << mass;
    ASSERT_EQ(pattern.Size(), expected.Size()) << mass;
    for (std::size_t i = 0; i < pattern.Size(); ++i)
      EXPECT_NEAR(pattern.probability[i], expected.probability[i], 1e-4 * expected.probability[i]) << mass;
  }
}

TEST(VisiblePatterns, ServeMassesBeyondTheirRange) {
  VisiblePatterns patterns(ParseFormula("C117 H184 N32 O35 S1"), {});
  EXPECT_EQ(&patterns.At(-50), &patterns.At(std::log(50.0)));
  EXPECT_EQ(&patterns.At(50), &patterns.At(std::log(1e6)));
  EXPECT_GE(patterns.At(std::log(1.0)).Size(), 1U);
}

}  // namespace
