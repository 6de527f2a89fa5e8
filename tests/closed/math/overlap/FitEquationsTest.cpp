// Tests: FitEquations.cpp, PeakColumns.cpp, FastExp.h.
#include <tslbl/closed/math/overlap/FitEquations.h>

#include <gtest/gtest.h>

#include <tslbl/closed/math/overlap/FastExp.h>

#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

// In the order that TermOrder has.
void SetNumber(const TermOrder& order, std::size_t term, double value, PeakSum& sum) {
  const std::size_t peaks = sum.Count();
  if (term < peaks)
    sum.heights[term] = value;
  else if (term < order.Width(0))
    sum.tops[term - peaks] = value;
  else if (term == order.Skew() && order.Free().skew)
    sum.skew = value;
  else if (term == order.Baseline())
    sum.baseline = value;
  else if (order.HasOwnWidths())
    sum.widths[term - order.Width(0)] = value;
  else
    std::ranges::fill(sum.widths, value);
}

std::vector<double> Numbers(const TermOrder& order, const PeakSum& sum) {
  std::vector<double> numbers = sum.heights;
  numbers.insert(numbers.end(), sum.tops.begin(), sum.tops.end());
  numbers.insert(numbers.end(), sum.widths.begin(),
                 sum.widths.begin() + static_cast<std::ptrdiff_t>(order.WidthCount()));
  if (order.Free().skew) numbers.push_back(sum.skew);
  numbers.push_back(sum.baseline);
  return numbers;
}

struct Equations : testing::TestWithParam<FreeTerms> {
  Equations() {
    Random random(3);
    group = SimulateGroup({.peaks = 3, .spacing = 1.1}, random);
    sum.heights = {0.7, 1.3, 0.5};
    sum.tops = {20, 35, 47};
    sum.widths = {5, 5, 5};
    sum.skew = GetParam().skew ? 0.1 : 0;
    sum.baseline = 0.02;
    if (GetParam().widths == FreeTerms::Widths::Own) sum.widths = {4, 5, 6};
  }

  SimulatedGroup group;
  PeakSum sum;
};

INSTANTIATE_TEST_SUITE_P(Terms, Equations,
                         testing::Values(FreeTerms{}, FreeTerms{true, FreeTerms::Widths::Shared, true, true},
                                         FreeTerms{true, FreeTerms::Widths::Own, true, true},
                                         FreeTerms{true, FreeTerms::Widths::Own, false, true}));

// One derivative at one point, by central differences.
double Difference(const TermOrder& order, const PeakSum& sum, std::size_t term, double x) {
  constexpr double kStep = 1e-5;
  const double value = Numbers(order, sum)[term];
  PeakSum less = sum;
  PeakSum more = sum;
  SetNumber(order, term, value - kStep, less);
  SetNumber(order, term, value + kStep, more);
  return (more.At(x) - less.At(x)) / (2 * kStep);
}

TEST_P(Equations, AreTheProductsOfDerivativesByDifferences) {
  GroupSamples samples(group.x, group.y);
  samples.WeighBy(std::vector<double>(group.y.size(), 1.0));
  const TermOrder order(3, GetParam());
  FitEquations equations;
  EquationBuilder(samples, 3).Build(sum, order, equations);
  const std::size_t size = order.Count();
  std::vector<std::vector<double>> columns(size);
  std::vector<double> residuals;
  for (std::size_t i = 0; i < group.x.size(); ++i) {
    residuals.push_back(samples.Y()[i] - sum.At(group.x[i]));
    for (std::size_t term = 0; term < size; ++term)
      columns[term].push_back(Difference(order, sum, term, group.x[i]));
  }
  const auto product = [](const std::vector<double>& a, const std::vector<double>& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
  };
  EXPECT_NEAR(equations.squares, product(residuals, residuals), 1e-9 * equations.squares);
  for (std::size_t a = 0; a < size; ++a) {
    const double norm = std::sqrt(product(columns[a], columns[a]));
    EXPECT_NEAR(equations.slope[a], product(columns[a], residuals),
                1e-6 * norm * std::sqrt(equations.squares));
    for (std::size_t b = 0; b <= a; ++b)
      EXPECT_NEAR(equations.matrix[a * size + b], product(columns[a], columns[b]),
                  1e-6 * norm * std::sqrt(product(columns[b], columns[b])))
          << a << " " << b;
  }
}

TEST_P(Equations, AreTheSameWhereAPeakIsTooFarToMatter) {
  const GroupSamples none(group.x, group.y);
  GroupSamples samples = none;
  samples.WeighBy(group.mean);
  PeakSum more = sum;
  more.heights.push_back(1);
  more.tops.push_back(1e6);
  more.widths.push_back(5);
  FitEquations few;
  FitEquations many;
  EquationBuilder(samples, 3).Build(sum, TermOrder(3, GetParam()), few);
  EquationBuilder(samples, 4).Build(more, TermOrder(4, GetParam()), many);
  EXPECT_EQ(many.squares, few.squares);
  EXPECT_EQ(many.slope[3], 0);
  EXPECT_EQ(many.slope[TermOrder(4, GetParam()).Top(2)], few.slope[TermOrder(3, GetParam()).Top(2)]);
}

TEST(EquationBuilder, EvaluatesTheSum) {
  Random random(3);
  const SimulatedGroup group = SimulateGroup({.peaks = 5, .spacing = 2}, random);
  const GroupSamples samples(group.x, group.y);
  PeakSum sum;
  sum.heights = {3, 1};
  sum.tops = {20, 100};
  sum.widths = {5, 3};
  sum.skew = -0.2;
  sum.baseline = 0.5;
  std::vector<double> values;
  EquationBuilder(samples, 2).Evaluate(sum, values);
  for (std::size_t i = 0; i < group.x.size(); ++i) EXPECT_NEAR(values[i], sum.At(group.x[i]), 1e-12);
}

TEST(EquationBuilder, CountsItsEffort) {
  Random random(3);
  const SimulatedGroup group = SimulateGroup({}, random);
  const GroupSamples samples(group.x, group.y);
  EquationBuilder builder(samples, 1);
  PeakSum sum;
  sum.heights = {1};
  sum.tops = {20};
  sum.widths = {5};
  FitEquations equations;
  builder.Build(sum, TermOrder(1, {}), equations);
  const std::uint64_t once = builder.Effort();
  builder.Build(sum, TermOrder(1, {}), equations);
  EXPECT_GT(once, group.x.size());
  EXPECT_EQ(builder.Effort(), 2 * once);
}

TEST(FastExp, IsWithinItsErrorOfTheTrueOne) {
  double worst = 0;
  for (double x = -700; x < 700; x += 0.0371) {
    const Lanes arguments = {x, x / 7, x / 100, x / 1e6};
    Lanes values;
    FastExp(arguments, values);
    for (std::size_t k = 0; k < 4; ++k)
      worst = std::max(worst, std::abs(values[k] / std::exp(arguments[k]) - 1));
  }
  EXPECT_LE(worst, 5e-16);
}

TEST(FastExp, OfZeroIsOne) {
  Lanes values;
  FastExp(Lanes{}, values);
  EXPECT_EQ(values[0], 1);
}

}  // namespace
