#include <gtest/gtest.h>

#include <tool/io/Gaps.h>
#include <random>
#include <vector>

namespace tests {
namespace {

// Stretches of points, each with its begin, step and number of points.
struct Stretch {
  double from;
  double step;
  int points;
};

std::vector<std::size_t> GapsOf(const std::vector<Stretch>& stretches) {
  std::vector<double> x;
  for (const Stretch& s : stretches)
    for (int i = 0; i < s.points; ++i) x.push_back(s.from + i * s.step);
  std::vector<std::size_t> at;
  for (const TslTool::Gap& gap : TslTool::GapsOf(x)) at.push_back(gap.at);
  return at;
}

using Places = std::vector<std::size_t>;

TEST(Gaps, LieBetweenPointsThatAreFarApart) {
  EXPECT_EQ(GapsOf({{100, 0.1, 50}, {110, 0.1, 50}}), Places{50});
  EXPECT_EQ(GapsOf({{100, 0.1, 5}, {101, 0.1, 5}, {102, 0.1, 5}}), (Places{5, 10}));
}

TEST(Gaps, AreWiderThanThreeAndAHalfSteps) {
  EXPECT_EQ(GapsOf({{100, 0.1, 50}, {105.2, 0.1, 50}}), Places{});
  EXPECT_EQ(GapsOf({{100, 0.1, 50}, {105.3, 0.1, 50}}), Places{50});
}

TEST(Gaps, AreNotWhereAScanGoesOnWithAnotherStep) {
  EXPECT_EQ(GapsOf({{100, 0.02, 5000}, {200, 0.2, 500}}), Places{});
  EXPECT_EQ(GapsOf({{100, 0.2, 500}, {200, 0.02, 5000}}), Places{});
  EXPECT_EQ(GapsOf({{100, 0.02, 500}, {200, 0.2, 500}}), Places{500});
}

TEST(Gaps, TellTheStepInFrontOfThem) {
  std::vector<double> x;
  for (int i = 0; i < 70; ++i) x.push_back(100.0 + 0.1 * i + (i < 40 ? 0.0 : 5.0));
  ASSERT_EQ(TslTool::GapsOf(x).size(), 1U);
  EXPECT_NEAR(TslTool::GapsOf(x)[0].step, 0.1, 1e-9);
}

// Lines at steps of 0.1 and 0.2 and single counts between them, at any place of such a grid.
TEST(Gaps, AmongPointsThatStandAloneHaveTheStepOfTheAxis) {
  std::mt19937_64 random(1);
  std::geometric_distribution<int> places(0.02);
  std::vector<double> x;
  const auto add = [&](double step, int n) { x.push_back((x.empty() ? 100.0 : x.back()) + step * n); };
  for (int i = 0; i < 100; ++i) add(0.1, 1);
  for (int i = 0; i < 300; ++i) add(0.15, 1 + places(random));
  for (int i = 0; i < 100; ++i) add(0.2, 1);
  std::size_t far = 0;
  for (std::size_t i = 200; i < 350; ++i) far += x[i] - x[i - 1] > 3.5 * 0.2 ? 1 : 0;
  std::size_t found = 0;
  for (const auto& [at, gapStep] : TslTool::GapsOf(x)) {
    if (at < 200 || at >= 350) continue;
    EXPECT_GT(gapStep, 0.1);
    EXPECT_LT(gapStep, 0.2);
    found += x[at] - x[at - 1] > 3.5 * 0.2 ? 1 : 0;
  }
  EXPECT_GT(far, 100U);
  EXPECT_EQ(found, far);
}

TEST(Gaps, OfAFewPointsAreNone) {
  EXPECT_EQ(GapsOf({}), Places{});
  EXPECT_EQ(GapsOf({{100, 0.1, 1}}), Places{});
  EXPECT_EQ(GapsOf({{100, 0.1, 2}}), Places{});
}

}  // namespace
}  // namespace tests
