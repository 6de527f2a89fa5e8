#include <tool/commands/peaks/Spikes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include <fmt/format.h>
#include <tool/TempFile.h>
#include <tool/ToolRun.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr int kLines = 7;

// Lines of 3000 over normal noise of 5, and single points of `spike` in between.
std::string WithSpikes(double points, int spikes, double spike) {
  std::mt19937_64 random(1);
  std::normal_distribution noise(0.0, 5.0);
  std::string text;
  for (int i = 0; i < 8000; ++i) {
    double y = 50.0 + noise(random);
    y += 3000.0 * std::exp(-4.0 * std::log(2.0) * std::pow(std::remainder(i - 500, 1000) / points, 2.0));
    if (i % 251 == 100 && i / 251 < spikes) y += spike;
    if (i < 1000) y = 50.0 + noise(random) + (i % 251 == 100 && i / 251 < spikes ? spike : 0.0);
    text += fmt::format("{:.2f} {:.3f}\n", 100.0 + 0.05 * i, y);
  }
  return text;
}

Outcome Evaluate(const std::string& text, const Arguments& options = {}) {
  const TempFile file("a.txt", text);
  Arguments command = {"peaks", file.Path(), "--format", "tsv"};
  command.insert(command.end(), options.begin(), options.end());
  return RunTool(command);
}

std::size_t RowsOf(const Outcome& outcome) { return LinesOf(outcome.out).size() - 1; }

TEST(Spikes, AreLeftOutAndTold) {
  for (const double spike : {60.0, 200.0, 1000.0, 3000.0}) {
    const Outcome outcome = Evaluate(WithSpikes(12.0, 4, spike));
    EXPECT_EQ(RowsOf(outcome), kLines) << spike;
  }
  const std::string text = WithSpikes(12.0, 4, 300.0);
  EXPECT_THAT(Evaluate(text).err,
              HasSubstr(": 4 spikes of a single point left out; --min-rise 0 keeps them\n"));
  EXPECT_EQ(RowsOf(Evaluate(text, {"--min-rise", "0"})), kLines + 4);
}

TEST(Spikes, AreNoNarrowLines) {
  for (const double points : {2.0, 4.0, 6.0, 12.0}) {
    const Outcome outcome = Evaluate(WithSpikes(points, 0, 0.0), {"--smooth", "savgol:5"});
    EXPECT_EQ(RowsOf(outcome), kLines) << points;
    EXPECT_THAT(outcome.err, Not(HasSubstr("single point"))) << points;
  }
}

TEST(Spikes, AreToldWhereNothingIsSmoothed) {
  const std::string trouble = "1 spectrum with peaks of a single point among wider ones, as spikes are";
  EXPECT_THAT(Evaluate(WithSpikes(12.0, 25, 20000.0)).err, HasSubstr(trouble + " (first at scan 1, m/z 1"));
  EXPECT_THAT(Evaluate(WithSpikes(12.0, 25, 20000.0), {"--smooth", "median:5"}).err, Not(HasSubstr(trouble)));
  EXPECT_THAT(Evaluate(WithSpikes(12.0, 0, 0.0), {"--smooth", "off"}).err, Not(HasSubstr(trouble)));
}

// Of lines that just reach over a threshold a single point is left.
TEST(Spikes, AreNoTopsOverAThreshold) {
  std::string text;
  for (int i = 0; i < 8000; ++i) {
    const int line = i / 400;
    const double height = line % 2 == 0 ? 5000.0 : 110.0;
    const double y = height * std::exp(-4.0 * std::log(2.0) * std::pow((i % 400 - 200) / 6.0, 2.0));
    text += fmt::format("{:.2f} {:.3f}\n", 100.0 + 0.05 * i, y > 105.0 ? y : 0.0);
  }
  EXPECT_THAT(Evaluate(text).err, Not(HasSubstr("single point")));
}

}  // namespace
}  // namespace tests
