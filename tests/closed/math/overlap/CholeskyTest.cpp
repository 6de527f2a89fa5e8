#include <tslbl/closed/math/overlap/Cholesky.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using TslMath::Cholesky;

namespace {

using Values = std::vector<double>;

// Only the lower triangle is read.
const Values kMatrix = {4, 99, 99, 2, 5, 99, 1, 3, 6};
const std::vector<char> kNoneKept = {0, 0, 0};

TEST(Cholesky, SolvesASystem) {
  Cholesky factor;
  ASSERT_TRUE(factor.Factor(kMatrix, kNoneKept));
  Values b = {4 + 4 + 3, 2 + 10 + 9, 1 + 6 + 18};  // of x = 1, 2, 3
  factor.Solve(b);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(b[i], static_cast<double>(i + 1), 1e-14);
}

TEST(Cholesky, DampsTheDiagonal) {
  Cholesky factor;
  ASSERT_TRUE(factor.Factor(Values{4}, std::vector<char>{0}, 1.5));
  Values b = {12};
  factor.Solve(b);
  EXPECT_DOUBLE_EQ(b[0], 2);
}

TEST(Cholesky, PassesOverWhatIsKept) {
  Cholesky factor;
  ASSERT_TRUE(factor.Factor(kMatrix, std::vector<char>{0, 1, 0}));
  Values b = {4 + 3, 77, 1 + 18};  // of x = 1, -, 3
  factor.Solve(b);
  EXPECT_NEAR(b[0], 1, 1e-14);
  EXPECT_EQ(b[1], 0);
  EXPECT_NEAR(b[2], 3, 1e-14);
}

TEST(Cholesky, TellsTheVarianceOfASum) {
  Cholesky factor;
  ASSERT_TRUE(factor.Factor(Values{2, 0, 0, 4}, std::vector<char>{0, 0}));
  Values b = {1, 2};
  EXPECT_DOUBLE_EQ(factor.Variance(b), 1.0 / 2 + 4.0 / 4);
}

TEST(Cholesky, RefusesWhatHasNoSolution) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  Cholesky factor;
  for (const Values& matrix : {Values{1, 0, 1, 1}, Values{1, 0, 2, 1}, Values{0, 0, 0, 1},
                               Values{kNaN, 0, 0, 1}, Values{1, 0, HUGE_VAL, 1}})
    EXPECT_FALSE(factor.Factor(matrix, std::vector<char>{0, 0}));
}

}  // namespace
