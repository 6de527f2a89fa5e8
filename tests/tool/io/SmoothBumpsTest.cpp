#include <tool/io/SmoothBumps.h>

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
using TslTool::AreBumpsSmooth;
using Values = std::vector<double>;

// 50 lines of 12 points over a background.
Values Counts(double mean, double height) {
  std::mt19937_64 random(1);
  Values y(20000);
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double u = (static_cast<double>(i % 400) - 200.0) / 5.1;
    y[i] = std::poisson_distribution<int>(mean + height * std::exp(-0.5 * u * u))(random);
  }
  return y;
}

// As a program leaves it that writes what hardly differs from 0 as 0.
Values Through(const Values& kernel, const Values& y) {
  Values smooth(y.size());
  for (std::size_t i = 0; i + kernel.size() <= y.size(); ++i) {
    double sum = 0.0;
    for (std::size_t k = 0; k < kernel.size(); ++k) sum += kernel[k] * y[i + k];
    smooth[i + kernel.size() / 2] = sum > 1e-3 ? sum : 0.0;
  }
  return smooth;
}

const Values kGaussian = {0.02, 0.08, 0.24, 0.32, 0.24, 0.08, 0.02};
const Values kSavitzkyGolay = {-0.0909, 0.0606, 0.1688, 0.2338, 0.2554, 0.2338, 0.1688, 0.0606, -0.0909};

TEST(SmoothBumps, AreWhereAFilterRan) {
  for (const double mean : {0.005, 0.02})
    for (const Values& kernel : {kGaussian, kSavitzkyGolay})
      EXPECT_TRUE(AreBumpsSmooth(Through(kernel, Counts(mean, 300.0)))) << mean;
}

TEST(SmoothBumps, AreNotOfCountsNorOfRates) {
  for (const double height : {10.0, 100.0, 1000.0}) {
    Values rates = Counts(0.001, height);
    for (std::size_t i = 0; i < rates.size(); ++i) rates[i] *= 1.0 + 1e-6 * static_cast<double>(i);
    EXPECT_FALSE(AreBumpsSmooth(rates)) << height;
  }
  for (const double mean : {0.0, 0.001, 0.01, 0.1, 0.3})
    for (const double height : {10.0, 100.0, 10000.0})
      EXPECT_FALSE(AreBumpsSmooth(Counts(mean, height))) << mean << ", " << height;
}

TEST(SmoothBumps, AreForty) {
  const Values y = Through(kGaussian, Counts(0.0, 300.0));
  EXPECT_TRUE(AreBumpsSmooth(y));
  EXPECT_FALSE(AreBumpsSmooth(Values(y.begin(), y.begin() + 30 * 400)));
  EXPECT_FALSE(AreBumpsSmooth({}));
}

TEST(SmoothBumps, AreToldAsStandardErrorsAreTooSmall) {
  const auto messages = [](const Values& y) {
    std::string text;
    for (std::size_t i = 0; i < y.size(); ++i)
      text += fmt::format("{:.3f} {}\n", 100.0 + 0.05 * static_cast<double>(i), y[i]);
    const TempFile file("a.txt", text);
    return RunTool({"peaks", file.Path()}).err;
  };
  const Values counts = Counts(0.02, 300.0);
  EXPECT_THAT(messages(Through(kGaussian, counts)), HasSubstr("standard errors are too small"));
  EXPECT_THAT(messages(counts), Not(HasSubstr("standard errors are too small")));
}

}  // namespace
}  // namespace tests
