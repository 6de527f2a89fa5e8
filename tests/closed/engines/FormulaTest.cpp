// Tests: Elements.cpp.

#include <gtest/gtest.h>
#include <tslbl/closed/engines/Elements.h>
#include <tslbl/closed/engines/Formula.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace TslMath {
namespace {

// "C6 H12 O6" in the order of Elements().
std::string Normal(const std::string& formula) {
  const Composition composition = ParseFormula(formula);
  std::string text;
  for (std::size_t i = 0; i < composition.counts.size(); ++i) {
    if (composition.counts[i] == 0) continue;
    text +=
        (text.empty() ? "" : " ") + std::string(Elements()[i].symbol) + std::to_string(composition.counts[i]);
  }
  return text;
}

std::string ErrorOf(const std::string& formula) {
  try {
    ParseFormula(formula);
  } catch (const FormulaError& error) {
    return error.what();
  }
  return "";
}

struct Reading {
  std::string text, meaning;
};

TEST(Formula, ReadsSymbolsAndCounts) {
  const std::vector<Reading> table = {
      {"C6H12O6", "H12 C6 O6"},
      {" C6  H12\tO6 ", "H12 C6 O6"},
      {"CO", "C1 O1"},
      {"NaCl", "Na1 Cl1"},
      {"CH3CH2OH", "H6 C2 O1"},
      {"C117 H184 N32 O35 S1", "H184 C117 N32 O35 S1"},
      {"SiF4", "F4 Si1"},
      {"FeBr3I", "Fe1 Br3 I1"},
      {"C999999999", "C999999999"},
  };
  for (const auto& [text, meaning] : table) EXPECT_EQ(Normal(text), meaning) << text;
}

TEST(Formula, TakesCountsThatBeginWithZeros) {
  const std::vector<Reading> table = {
      {"P03", "P3"},  {"C0 H2 O0", "H2"}, {"C10", "C10"}, {"C38 H48 N15 O26 P03", "H48 C38 N15 O26 P3"},
      {"C002", "C2"},
  };
  for (const auto& [text, meaning] : table) EXPECT_EQ(Normal(text), meaning) << text;
}

// Nucleotides of A, C, G and U as PubChem gives them, the water lost at three bonds and a phosphate, HPO3, at
// one end.
TEST(Formula, HasTheCompositionOfTheAverageRna) {
  const double nucleotides = MonoMass(ParseFormula("C10H14N5O7P")) + MonoMass(ParseFormula("C9H14N3O8P")) +
                             MonoMass(ParseFormula("C10H14N5O8P")) + MonoMass(ParseFormula("C9H13N2O9P"));
  EXPECT_NEAR(MonoMass(ParseFormula("C38 H48 N15 O26 P03")),
              nucleotides - 3.0 * MonoMass(ParseFormula("H2O")) - MonoMass(ParseFormula("HPO3")), 1e-9);
}

TEST(Formula, NamesWhatIsWrongAndWhere) {
  const std::vector<Reading> table = {
      {"C6 Xx2", "formula \"C6 Xx2\", character 4: unknown element \"Xx\""},
      {"C6 h12", "formula \"C6 h12\", character 4: no element symbol begins with \"h\""},
      {"6C", "formula \"6C\", character 1: no element symbol begins with \"6\""},
      {"C6-H12", "formula \"C6-H12\", character 3: no element symbol begins with \"-\""},
      {"C6 12", "formula \"C6 12\", character 4: no element symbol begins with \"1\""},
      {"C1000000000", "formula \"C1000000000\", character 2: a count of more than 9 digits"},
      {"C\u2086", "formula \"C\u2086\", character 2: not a plain ASCII character"},
      {"P00", "formula \"P00\", character 1: no element"},
      {"", "formula \"\", character 1: no element"},
      {"  ", "formula \"  \", character 1: no element"},
  };
  for (const auto& [text, error] : table) EXPECT_EQ(ErrorOf(text), error);
}

TEST(Formula, TellsThePositionOfAnError) {
  try {
    ParseFormula("C6 Xx2");
    FAIL() << "no error";
  } catch (const FormulaError& error) {
    EXPECT_EQ(error.Position(), 3u);
  }
}

// Monoisotopic masses as PubChem gives them.
TEST(Formula, HasThePublishedMonoisotopicMasses) {
  EXPECT_NEAR(MonoMass(ParseFormula("C6H12O6")), 180.06338810, 1e-7);
  EXPECT_NEAR(MonoMass(ParseFormula("C8H10N4O2")), 194.08037557, 1e-7);
  EXPECT_NEAR(MonoMass(ParseFormula("C9H8O4")), 180.04225873, 1e-7);
  EXPECT_NEAR(MonoMass(ParseFormula("C60")), 720, 1e-12);
}

TEST(Formula, HasTheMassOfTheAverageProteinUnit) {
  EXPECT_NEAR(MonoMass(ParseFormula("C117 H184 N32 O35 S1")), 2629.33226, 5e-6);
}

// M. Prohaska et al., Standard atomic weights of the elements 2021 (IUPAC Technical Report), 2022: the
// abridged values, within the last digit that they give.
TEST(Elements, HaveTheStandardAtomicWeights) {
  struct Weight {
    std::string symbol;
    double weight, uncertainty;
  };
  const std::vector<Weight> table = {
      {"H", 1.0080, 0.0002}, {"Li", 6.94, 0.06},    {"C", 12.011, 0.002},  {"N", 14.007, 0.001},
      {"O", 15.999, 0.001},  {"F", 18.998, 0.001},  {"Na", 22.990, 0.001}, {"Si", 28.085, 0.001},
      {"P", 30.974, 0.001},  {"S", 32.06, 0.02},    {"Cl", 35.45, 0.01},   {"K", 39.098, 0.001},
      {"Fe", 55.845, 0.002}, {"Br", 79.904, 0.003}, {"I", 126.90, 0.01},   {"Cs", 132.91, 0.01},
  };
  ASSERT_EQ(table.size(), Elements().size());
  for (const auto& [symbol, weight, uncertainty] : table) {
    const std::int32_t element = FindElement(symbol);
    ASSERT_GE(element, 0) << symbol;
    EXPECT_NEAR(Elements()[static_cast<std::size_t>(element)].AverageMass(), weight, uncertainty) << symbol;
  }
}

TEST(Elements, HaveAbundancesThatSumToOneAndTheMostAbundantAsMain) {
  for (const Element& element : Elements()) {
    double sum = 0;
    for (const Isotope& isotope : element.isotopes) {
      sum += isotope.abundance;
      EXPECT_LE(isotope.abundance, element.isotopes[element.main].abundance) << element.symbol;
      EXPECT_NEAR(isotope.mass, isotope.massNumber, 0.1) << element.symbol;
    }
    EXPECT_NEAR(sum, 1, 1e-12) << element.symbol;
  }
}

TEST(ScaleToMass, GivesTheUnitBackAtItsOwnMass) {
  const Composition unit = ParseFormula("C117 H184 N32 O35 S1");
  EXPECT_EQ(ScaleToMass(unit, MonoMass(unit)), unit);
}

TEST(ScaleToMass, LetsHydrogenFillTheRest) {
  const Composition unit = ParseFormula("C117 H184 N32 O35 S1");
  for (const double mass : {100.0, 500.0, 1234.5, 20000.0}) {
    EXPECT_NEAR(MonoMass(ScaleToMass(unit, mass)), mass, 0.504) << mass;
  }
  EXPECT_EQ(ScaleToMass(unit, 2000), ParseFormula("C89 H131 N24 O27 S1"));
}

TEST(ScaleToMass, RefusesWhatIsNoMassOrNoUnit) {
  const Composition unit = ParseFormula("C");
  for (const double mass :
       {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    EXPECT_THROW(ScaleToMass(unit, mass), std::invalid_argument) << mass;
  }
  EXPECT_THROW(ScaleToMass(Composition(), 100), std::invalid_argument);
}

}  // namespace
}  // namespace TslMath
