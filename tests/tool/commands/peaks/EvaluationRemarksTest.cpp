// Tests: EvaluationRemarks.cpp, EvaluateInput.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/commands/peaks/EvaluationRemarks.h>
#include <tool/io/MzMLMaker.h>

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

// 20 000 counts with lines `width` points wide, of an MS level.
std::string CountsOfLevel(int scan, int level, double width) {
  std::mt19937_64 random(static_cast<std::uint64_t>(scan));
  Values mz, counts;
  for (int i = 0; i < 20000; ++i) {
    const double u = (i % 800 - 400) / width;
    mz.push_back(100.0 + 0.05 * i);
    counts.push_back(std::poisson_distribution<int>(1.0 + 500.0 * std::exp(-2.7726 * u * u))(random));
  }
  return SpectrumOf(fmt::format("scan={}", scan), mz.size(),
                    ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>(counts)),
                    Term("MS:1000511", fmt::format("value=\"{}\"", level)) + Term(kProfile));
}

TEST(EvaluationRemarks, LevelsWithPeaksOfDifferentWidthsAreTold) {
  const auto errorOf = [](double first, double second, const Arguments& options = {}) {
    std::string spectra;
    for (int scan = 1; scan <= 8; ++scan)
      spectra += CountsOfLevel(scan, 1 + scan % 2, scan % 2 == 0 ? first : second);
    const TempFile file("a.mzML", MzML(spectra, 8));
    Arguments command = {"peaks", file.Path(), "--format", "tsv", "--quiet"};
    command.insert(command.end(), options.begin(), options.end());
    return RunTool(command).err;
  };
  EXPECT_THAT(errorOf(12.0, 3.5), HasSubstr("peaks of MS level 1 are 12"));
  EXPECT_THAT(errorOf(12.0, 3.5), HasSubstr("--ms-level N evaluates a level with a chain of its own"));
  EXPECT_THAT(errorOf(4.0, 12.0), HasSubstr("peaks of MS level 2 are 12"));
  EXPECT_THAT(errorOf(12.0, 11.0), Not(HasSubstr("MS level")));
  EXPECT_THAT(errorOf(12.0, 3.5, {"--ms-level", "1"}), Not(HasSubstr("MS level")));
}

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

TEST(EvaluationRemarks, AmplitudesThatAreTooLargeForTheirSquaresAreTold) {
  const std::string told =
      "1 spectrum with peaks whose noise is no number, as of amplitudes above 1e150; --scale 1e-200 or the "
      "like divides "
      "them\n";
  EXPECT_THAT(Evaluate(Spectrum(20.0, 1e200), {}).err, HasSubstr(told));
  EXPECT_EQ(Evaluate(Spectrum(20.0, 1e140), {}).err, "");
  const Outcome divided = Evaluate(Spectrum(20.0, 1e200), {"--scale", "1e-200"});
  EXPECT_EQ(divided.err, "");
  EXPECT_EQ(RowsOf(divided), 3U);
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

// A line of 0.6 m/z and others, over some scatter.
std::string WithLines(const std::vector<std::pair<double, double>>& widthsAndHeights, double most = 1e9) {
  std::mt19937 random(1);
  std::string text;
  for (int i = 0; i < 3000; ++i) {
    const double mz = 100.0 + 0.1 * i;
    double amplitude = static_cast<double>(random() % 11);
    double centre = 150.0;
    for (const auto& [width, height] : widthsAndHeights) {
      amplitude += height * std::exp(-4.0 * std::log(2.0) * std::pow((mz - centre) / width, 2.0));
      centre += 100.0;
    }
    text += fmt::format("{:.1f} {:.3f}\n", mz, std::min(amplitude, most));
  }
  return text;
}

TEST(EvaluationRemarks, AFlatTopIsTold) {
  const std::string told =
      "1 spectrum with a flat top of 4 points or more, as of a detector at its end (first "
      "at scan 1); heights and areas are too low there\n";
  EXPECT_THAT(Evaluate(WithLines({{0.6, 9000}}, 3000), {}).err, HasSubstr(told));
  EXPECT_EQ(Evaluate(WithLines({{0.6, 9000}}), {}).err, "");
}

TEST(EvaluationRemarks, PeaksThatSmoothingFlattensAreTold) {
  const Outcome outcome = Evaluate(WithLines({{0.6, 9000}, {3.0, 5000}}), {"--smooth", "savgol:33:2"});
  EXPECT_THAT(
      outcome.err,
      HasSubstr("1 spectrum with peaks that smoothing makes lower by a fifth or higher by a twentieth "
                "(first at scan 1, m/z 150.00, 85"));
  EXPECT_THAT(outcome.err, HasSubstr(" behind it); another window, or --smooth off, keeps them\n"));
}

TEST(EvaluationRemarks, AHumpAmongPeaksIsTold) {
  const Outcome outcome = Evaluate(WithLines({{0.6, 9000}, {20.0, 3000}, {0.6, 8000}}), {});
  EXPECT_THAT(outcome.err,
              HasSubstr("1 spectrum with peaks ten times as wide as the others, which may be background "
                        "(first at scan 1, m/z 2"));
  EXPECT_EQ(Evaluate(WithLines({{0.6, 9000}, {20.0, 3000}, {0.6, 8000}}), {"--max-width", "5"}).err, "");
}

TEST(EvaluationRemarks, AWindowTooShortForAPeakIsTold) {
  std::string text;
  for (int i = 0; i < 14; ++i)
    text += fmt::format("{:.1f} {:.0f}\n", 100.0 + 0.1 * i, 1000.0 * std::exp(-0.06 * (i - 7) * (i - 7)));
  EXPECT_THAT(
      Evaluate(text, {}).err,
      HasSubstr("1 spectrum without a peak and shorter than 25 points (first at scan 1), which may be "
                "too few to tell a peak from its background\n"));
}

TEST(EvaluationRemarks, APeakThatLeavesLittleBackgroundIsTold) {
  const auto spectrum = [](int points) {
    std::string text;
    for (int i = 0; i < points; ++i)
      text += fmt::format("{:.1f} {:.0f}\n", 100.0 + 0.1 * i,
                          20.0 + i * 7919 % 11 + 3000.0 * std::exp(-0.0433 * std::pow(i - points / 2, 2.0)));
    return text;
  };
  const std::string told =
      "1 spectrum with a peak wider than a fifth of its points, which leaves little background (first at "
      "scan 1, "
      "m/z 101.50); heights and areas may be too low\n";
  EXPECT_THAT(Evaluate(spectrum(30), {}).err, HasSubstr(told));
  EXPECT_EQ(Evaluate(spectrum(60), {}).err, "");
}

TEST(Troubled, NamesTheFirstWhateverTheOrder) {
  TslTool::Troubled troubled;
  EXPECT_EQ(troubled.Text("with x", "; y"), "");
  troubled.Add(7, "m/z 2");
  EXPECT_EQ(troubled.Text("with x", "; y"), "1 spectrum with x (first at scan 7, m/z 2); y");
  troubled.Add(3, "m/z 1");
  troubled.Add(5);
  EXPECT_EQ(troubled.Text("with x", "; y"), "3 spectra with x (first at scan 3, m/z 1); y");
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
