#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include <fmt/format.h>

#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/commands/peaks/Evaluated.h>
#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/curve/PeakArea.h>
#include <tslbl/spectrum/PeakTable.h>

namespace tests {
namespace {

using TslTool::ErrorBar;
using TslTool::ReportedPeaks;

TEST(ReportedPeak, HasTheAreaOfTheWholePeak) {
  const auto loaded = EvaluatedScan(3);
  const auto peaks = ReportedPeaks(loaded);
  ASSERT_FALSE(peaks.empty());
  for (std::uint32_t i = 0; i < peaks.size(); ++i) {
    EXPECT_EQ(peaks[i].area, TslBL::QWholePeakArea(*loaded.spectrum, i));
    EXPECT_GT(peaks[i].area, peaks[i].row.Area);
  }
}

TEST(ReportedPeak, IsTheRowOfTheTable) {
  const auto loaded = EvaluatedScan(3);
  const auto rows = TslBL::CreateMZPeakTable(*loaded.spectrum);
  const auto peaks = ReportedPeaks(loaded);
  ASSERT_EQ(peaks.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(peaks[i].row, rows[i]);
}

// The narrow line of a spectrum whose others are three times as wide, as of a time of flight.
double AreaOfNarrowLine(const Arguments& options) {
  constexpr double kWide = 12.0;
  std::string text;
  for (int i = 0; i < 6000; ++i) {
    double y = 20.0 + 3.0 * std::sin(0.7 * i) * std::cos(1.9 * i);
    for (int line = 0; line < 6; ++line) {
      const double width = line == 0 ? kWide / 3.0 : kWide;
      y += 20000.0 * std::exp(-4.0 * std::log(2.0) * std::pow((i - 500 - 1000 * line) / width, 2.0));
    }
    text += fmt::format("{:.2f} {:.4f}\n", 100.0 + 0.05 * i, y);
  }
  const TempFile file("lines.txt", text);
  Arguments command = {"peaks", file.Path(), "--format", "tsv", "--range", "120-130"};
  command.insert(command.end(), options.begin(), options.end());
  return std::stod(RowsOf(RunTool(command).out).at(0).at("area"));
}

TEST(ReportedPeak, HasTheAreaThatWasMeasuredWhateverTheSmoothing) {
  const double area = 20000.0 * 0.2 * 1.0645;
  for (const char* smooth : {"off", "savgol:7:2", "savgol:13:2", "gaussian:9", "median:3"})
    EXPECT_NEAR(AreaOfNarrowLine({"--smooth", smooth}), area, 0.003 * area) << smooth;
}

TslBL::OverlapPeakInfo Fit() {
  TslBL::OverlapPeakInfo fit;
  fit.Position = 100.0;
  fit.Height = 50.0;
  fit.FWHM = 12.0;
  return fit;
}

TEST(ReportedPeak, OfAFitHasTheAreaOfItsGaussian) {
  auto loaded = EvaluatedScan(3);
  loaded.spectrum->overlapPeaks.push_back(Fit());
  const auto peaks = ReportedPeaks(loaded);
  EXPECT_NEAR(peaks.back().area, 50.0 * 0.6 * 1.0645, 0.02);  // 12 points of 0.05 m/z
}

TEST(ReportedPeak, OfAFitHasTheErrorsOfTheFit) {
  auto loaded = EvaluatedScan(3);
  TslBL::OverlapPeakInfo fit = Fit();
  fit.Fit5 = 0.2;
  fit.Fit6 = 7.0;
  loaded.spectrum->overlapPeaks.push_back(fit);
  fit.Height = 0.0;
  loaded.spectrum->overlapPeaks.push_back(fit);
  const auto peaks = ReportedPeaks(loaded);
  const ErrorBar& errors = peaks.at(peaks.size() - 2).errors;
  EXPECT_NEAR(errors.mz, 0.2 * 0.05, 1e-5);
  EXPECT_NEAR(errors.area, 7.0 * 0.05, 1e-3);
  EXPECT_TRUE(std::isnan(errors.amplitude));
  EXPECT_TRUE(std::isnan(peaks.back().errors.mz)) << "of a peak that came out without height";
}

}  // namespace
}  // namespace tests
