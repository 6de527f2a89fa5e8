#include <tool/simulate/IsotopeLines.h>

#include <gtest/gtest.h>

#include <tool/simulate/Protein.h>
#include <tslbl/closed/engines/IsotopePattern.h>
#include <cmath>

namespace tests {
namespace {

using TslTool::IsotopeLines;
using TslTool::IsotopeMass;
using TslTool::IsotopeMasses;
using TslTool::Line;

std::vector<IsotopeMass> MassesOf(double averageMass) {
  return IsotopeMasses(TslTool::InfusedProtein("a", averageMass, {1, 1}, 1.0));
}

double MeanOf(const std::vector<IsotopeMass>& masses) {
  double mean = 0.0;
  for (const IsotopeMass& isotope : masses) mean += isotope.share * isotope.mass;
  return mean;
}

double DeviationOf(const std::vector<IsotopeMass>& masses, double mean) {
  double variance = 0.0;
  for (const IsotopeMass& isotope : masses) variance += isotope.share * std::pow(isotope.mass - mean, 2);
  return std::sqrt(variance);
}

TEST(IsotopeMasses, AProteinHasItsAverageMass) {
  for (const double mass : {500.0, 501.3, 1234.5, 8564.6, 16951.5, 66430.3, 147951.0, 800000.0, 2000000.0})
    EXPECT_NEAR(MeanOf(MassesOf(mass)), mass, 1e-9 * mass);
}

// Horse apomyoglobin.
TEST(IsotopeMasses, AnAverageProteinIsAlmostTheRealOne) {
  const auto composition = TslMath::ParseFormula("C769H1212N210O218S2");
  const double mass = TslMath::AverageMass(composition);
  const std::vector<IsotopeMass> real =
      IsotopeMasses({"myoglobin", "C769H1212N210O218S2", 0.0, {{1, 1.0}}, 1.0, 0.0, 0.0});
  const std::vector<IsotopeMass> average = MassesOf(mass);
  EXPECT_NEAR(DeviationOf(average, mass), DeviationOf(real, mass), 0.05 * DeviationOf(real, mass));
  const auto top = [](const auto& masses) { return std::ranges::max(masses, {}, &IsotopeMass::share).mass; };
  EXPECT_NEAR(top(average), top(real), 1.1);
}

TEST(IsotopeMasses, OfAFormulaAreItsPattern) {
  const std::vector<IsotopeMass> water = IsotopeMasses({"water", "H2O", 0.0, {{1, 1.0}}, 1.0, 0.0, 0.0});
  EXPECT_NEAR(water[0].mass, 18.010565, 1e-6);
  EXPECT_NEAR(water[0].share, 0.9973, 1e-4);
}

TEST(IsotopeLines, StandAtTheMassWithProtonsOverTheCharge) {
  const std::vector<Line> lines = IsotopeLines({{1000.0, 0.6}, {1001.0, 0.4}}, 4, 0.01);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_DOUBLE_EQ(lines[0].mz, 1000.0 / 4 + 1.00727646688);
  EXPECT_DOUBLE_EQ(lines[1].mz, 1001.0 / 4 + 1.00727646688);
  EXPECT_EQ(lines[0].height, 0.6);
  EXPECT_EQ(lines[1].height, 0.4);
}

TEST(IsotopeLines, WhatTheBlurHoldsIsOneLineAtTheMean) {
  const std::vector<Line> lines =
      IsotopeLines({{100.0, 0.1}, {101.0, 0.3}, {102.0, 0.0}, {103.0, 0.6}}, 1, 2.5);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_NEAR(lines[0].mz, 100.75 + 1.00727646688, 1e-12);
  EXPECT_NEAR(lines[0].height, 0.4, 1e-12);
  EXPECT_EQ(lines[1].height, 0.6);
}

TEST(IsotopeLines, ABlurKeepsMeanAndSum) {
  const std::vector<IsotopeMass> masses = MassesOf(800000.0);
  const std::vector<Line> lines = IsotopeLines(masses, 700, 0.0127);
  EXPECT_LT(lines.size(), masses.size() / 5);
  double sum = 0.0, moment = 0.0;
  for (const Line& line : lines) sum += line.height, moment += line.height * line.mz;
  EXPECT_NEAR(sum, 1.0, 1e-9);
  EXPECT_NEAR(moment / sum, 800000.0 / 700 + 1.00727646688, 1e-8);
}

}  // namespace
}  // namespace tests
