#include <tool/simulate/Sample.h>

#include <gtest/gtest.h>

#include <tool/simulate/IsotopeLines.h>
#include <tslbl/closed/engines/Formula.h>

namespace tests {
namespace {

TEST(Sample, EachCompoundOfTheDemonstrationHasAFormulaOrAMass) {
  for (const TslTool::Compound& compound : TslTool::DemonstrationSample().compounds) {
    EXPECT_NE(compound.formula.empty(), compound.monoMass == 0.0) << compound.name;
    EXPECT_EQ(compound.averageMass, 0.0) << compound.name;
    EXPECT_FALSE(compound.charges.empty()) << compound.name;
    if (compound.formula.empty()) continue;
    EXPECT_NO_THROW(TslMath::ParseFormula(compound.formula)) << compound.name;
  }
}

TEST(Sample, TheTuningMixHasItsIonsWhereTheyAreKnownToBe) {
  constexpr double kKnown[] = {118.0863,  322.0481,  622.0290,  922.0098,
                               1221.9906, 1521.9715, 2121.9331, 2721.8948};
  const auto compounds = TslTool::CalibrantSample().compounds;
  ASSERT_EQ(compounds.size(), std::size(kKnown));
  for (std::size_t i = 0; i < compounds.size(); ++i) {
    EXPECT_NEAR(TslMath::MonoMass(TslMath::ParseFormula(compounds[i].formula)) + TslTool::kProton, kKnown[i],
                1e-4);
    EXPECT_EQ(compounds[i].elutionWidth, 0.0) << "it is infused";
  }
}

}  // namespace
}  // namespace tests
