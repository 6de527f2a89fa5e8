#include <tool/simulate/Sample.h>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace tests
