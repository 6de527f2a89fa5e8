// Tests: EvaluationRemarks.cpp, EvaluateInput.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <tool/TempFile.h>
#include <tool/ToolRun.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;

// Three lines over some scatter about `offset`, all times `factor`.
std::string Spectrum(double offset, double factor) {
  std::string text;
  for (int i = 0; i < 600; ++i) {
    const double line = 1000.0 * std::exp(-0.5 * std::pow((i % 200 - 100) / 3.0, 2.0));
    text += fmt::format("{:.2f} {:.17g}\n", 100.0 + 0.1 * i, factor * (line + offset + (i * 7919 % 11)));
  }
  return text;
}

Outcome Evaluate(const std::string& text, const Arguments& options) {
  const TempFile file("a.txt", text);
  Arguments command = {"peaks", file.Path(), "--format", "tsv", "--quiet"};
  command.insert(command.end(), options.begin(), options.end());
  return RunTool(command);
}

std::size_t RowsOf(const Outcome& outcome) { return LinesOf(outcome.out).size() - 1; }

TEST(EvaluationRemarks, AmplitudesThatSmoothingCutsAreTold) {
  const Outcome cut = Evaluate(Spectrum(-80.0, 1.0), {"--threshold", "5"});
  EXPECT_THAT(cut.err,
              HasSubstr("1 spectrum with amplitudes below 0, which smoothing takes for 0; --smooth off "
                        "keeps them"));
  EXPECT_EQ(Evaluate(Spectrum(-80.0, 1.0), {"--smooth", "off"}).err, "");
  EXPECT_EQ(Evaluate(Spectrum(20.0, 1.0), {}).err, "");
}

TEST(EvaluationRemarks, AnOffsetBelowZeroChangesNothingButTheLevel) {
  const auto rows = [](double offset) {
    const Outcome outcome = Evaluate(Spectrum(offset, 1.0), {});
    EXPECT_EQ(outcome.err, "");
    std::vector<std::vector<double>> values;
    const std::vector<std::string> lines = LinesOf(outcome.out);
    for (std::size_t i = 1; i < lines.size(); ++i) {
      std::istringstream line(lines[i]);
      std::vector<double> row;
      std::string field;
      while (row.size() < 10 && std::getline(line, field, '\t'))
        row.push_back(field.empty() ? 0.0 : std::stod(field));
      row.at(4) -= offset;  // the amplitude
      values.push_back(row);
    }
    return values;
  };
  const auto above = rows(20.0);
  const auto below = rows(-80.0);
  ASSERT_EQ(above.size(), 3U);
  ASSERT_EQ(below.size(), above.size());
  for (std::size_t i = 0; i < above.size(); ++i)
    for (std::size_t k = 0; k < above[i].size(); ++k)
      EXPECT_NEAR(below[i][k], above[i][k], 1e-6 * std::abs(above[i][k])) << i << ", column " << k;
}

TEST(EvaluationRemarks, NoiseThatIsTooSmallForARatioIsTold) {
  const Outcome tiny = Evaluate(Spectrum(20.0, 1e-12), {});
  EXPECT_THAT(tiny.err, HasSubstr("1 spectrum with peaks where the noise is below 1e-8"));
  EXPECT_THAT(tiny.err, HasSubstr("--scale 1e12"));
}

TEST(EvaluationRemarks, AWindowThatIsNotTakenAsItStandsIsTold) {
  const std::string text = Spectrum(20.0, 1.0);
  for (const char* how : {"savgol:4", "median:4"})
    EXPECT_THAT(Evaluate(text, {"--smooth", how}).err,
                HasSubstr("a window of 4 points is smoothed with 5, the next odd number\n"))
        << how;
  EXPECT_THAT(
      Evaluate(text, {"--smooth", "savgol:601"}).err,
      HasSubstr("1 spectrum shorter than the window of the smoothing, which is cut to their length\n"));
  for (const char* how : {"savgol:5", "median:5", "mean:4", "gaussian:4", "savgol:599", "off"})
    EXPECT_EQ(Evaluate(text, {"--smooth", how}).err, "") << how;
}

TEST(EvaluationRemarks, ScaledAmplitudesGiveThePeaksOfLargeOnes) {
  const Outcome large = Evaluate(Spectrum(20.0, 1.0), {});
  const Outcome scaled = Evaluate(Spectrum(20.0, 1e-12), {"--scale", "1e12"});
  EXPECT_EQ(scaled.err, "");
  EXPECT_EQ(RowsOf(large), 3U);
  EXPECT_EQ(RowsOf(scaled), RowsOf(large));
}

TEST(EvaluationRemarks, AScaleIsAboveZero) {
  for (const char* scale : {"0", "-1", "nan", "inf", "x"}) {
    const Outcome outcome = Evaluate(Spectrum(20.0, 1.0), {"--scale", scale});
    EXPECT_EQ(outcome.status, 2) << scale;
    EXPECT_THAT(outcome.err, HasSubstr("--scale")) << scale;
  }
}

}  // namespace
}  // namespace tests
