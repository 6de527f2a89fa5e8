#include <tslbl/closed/math/overlap/FitTask.h>

#include <gtest/gtest.h>

using namespace TslMath;

namespace {

TEST(FitLimits, BringASumBackWithinThem) {
  const FitLimits limits{.tops = {5, 9}, .reach = 2, .leastWidth = 1, .greatestWidth = 4};
  PeakSum sum;
  sum.heights = {-1, 3};
  sum.tops = {2, 12};
  sum.widths = {0.5, 7};
  sum.skew = -0.9;
  limits.Apply(sum);
  EXPECT_EQ(sum.heights, (std::vector<double>{0, 3}));
  EXPECT_EQ(sum.tops, (std::vector<double>{3, 11}));
  EXPECT_EQ(sum.widths, (std::vector<double>{1, 4}));
  EXPECT_EQ(sum.skew, -0.4);
}

// The points weigh nothing, so that only the tie is left.
TEST(FitTask, CountsDeviationsFromTheMeanWidth) {
  const std::vector<double> points = {1, 2, 3};
  const GroupSamples samples(points, points);
  EquationBuilder builder(samples, 2);
  const FitLimits limits;
  const TermOrder order(2, {true, FreeTerms::Widths::Own, false, true});
  const FitTask task(builder, limits, order, {10});
  PeakSum sum;
  sum.heights = {1, 1};
  sum.tops = {1, 2};
  sum.widths = {3, 5};
  FitEquations equations;
  task.Build(sum, equations);
  EXPECT_EQ(task.SquaresOfTie(sum), 20);
  EXPECT_EQ(equations.squares, 20);
  EXPECT_EQ(equations.slope[order.Width(0)], 10);
  EXPECT_EQ(equations.slope[order.Width(1)], -10);
  EXPECT_EQ(equations.matrix[order.Width(1) * order.Count() + order.Width(0)], -5);
  EXPECT_EQ(equations.matrix[order.Width(1) * order.Count() + order.Width(1)], 5);
}

TEST(FitTask, DoesNotTieACommonWidth) {
  const std::vector<double> points = {1, 2, 3};
  const GroupSamples samples(points, points);
  EquationBuilder builder(samples, 1);
  const FitLimits limits;
  PeakSum sum;
  sum.heights = sum.tops = sum.widths = {1};
  EXPECT_EQ(FitTask(builder, limits, TermOrder(1, {}), {10}).SquaresOfTie(sum), 0);
}

}  // namespace
