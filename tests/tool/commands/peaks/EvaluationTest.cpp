// Tests: ClippedNoise.cpp, Evaluation.cpp, FlankPeaks.cpp, NoiseOfPeaks.cpp, StillBackground.cpp,
// Windows.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/commands/peaks/FlankPeaks.h>
#include <tslbl/curve/CurveEval.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;

using Curve = std::function<double(double mz)>;

double Line(double mz, double centre, double height, double width) {
  const double u = (mz - centre) / width;
  return height * std::exp(-4.0 * std::log(2.0) * u * u);
}

// m/z 100 to 400, as far as `isMeasured` says; Poisson counts.
std::string Counted(const Curve& mean, double step, const std::function<bool(double)>& isMeasured) {
  std::mt19937_64 random(1);
  std::string text;
  for (int i = 0; i < static_cast<int>(300.0 / step); ++i) {
    const double mz = 100.0 + i * step;
    if (isMeasured(mz))
      text += fmt::format("{:.2f} {}\n", mz, std::poisson_distribution<int>(mean(mz))(random));
  }
  return text;
}

std::string Counted(const Curve& mean, double step = 0.05) {
  return Counted(mean, step, [](double) { return true; });
}

Outcome Evaluate(const std::string& text, const Arguments& options = {}) {
  const TempFile file("a.txt", text);
  Arguments command = {"peaks", file.Path(), "--format", "tsv"};
  command.insert(command.end(), options.begin(), options.end());
  return RunTool(command);
}

std::vector<std::vector<double>> RowsOf(const Outcome& outcome) {
  std::vector<std::vector<double>> rows;
  const std::vector<std::string> lines = LinesOf(outcome.out);
  for (std::size_t i = 1; i < lines.size(); ++i) {
    std::istringstream line(lines[i]);
    std::vector<double> row;
    std::string field;
    while (row.size() < 10 && std::getline(line, field, '\t'))
      row.push_back(field.empty() ? 0.0 : std::stod(field));
    rows.push_back(row);
  }
  return rows;
}

// Two lines of 300 and 50 above `level`, with normal noise of 1; as a detector gives them, or in whole
// numbers.
std::string OverPedestal(double level, int digits) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> noise;
  std::string text;
  for (int i = 0; i < 4000; ++i) {
    const double mz = 100.0 + 0.05 * i;
    const double y = Line(mz, 150.0, 300.0, 0.6) + Line(mz, 250.0, 50.0, 0.6) + noise(random);
    text += fmt::format("{:.2f} {:.{}f}\n", mz, y + level, digits);
  }
  return text;
}

double ColumnOf(const Outcome& outcome, const std::string& name, std::size_t row) {
  const auto fieldsOf = [](const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');) fields.push_back(field);
    return fields;
  };
  const std::vector<std::string> lines = LinesOf(outcome.out);
  const std::vector<std::string> names = fieldsOf(lines.at(0));
  const auto column = std::find(names.begin(), names.end(), name) - names.begin();
  return std::stod(fieldsOf(lines.at(row + 1)).at(static_cast<std::size_t>(column)));
}

TEST(Evaluation, ErrorsDoNotDependOnALevelBelow0) {
  for (const int digits : {0, 4}) {
    const Outcome usual = Evaluate(OverPedestal(0.0, digits));
    for (const double level : {-100.0, -1000.0, -32768.0}) {
      const Outcome low = Evaluate(OverPedestal(level, digits));
      ASSERT_EQ(LinesOf(low.out).size(), 3U) << level;
      for (const char* name : {"mz", "area", "width", "sn", "height", "mz_se", "amplitude_se", "area_se"})
        for (const std::size_t row : {0U, 1U}) {
          const double expected = ColumnOf(usual, name, row);
          EXPECT_NEAR(ColumnOf(low, name, row), expected, 1e-6 * expected)
              << name << " above " << level << " in " << digits << " digits";
        }
    }
  }
}

// Without smoothing nothing is added to the amplitudes, and a peak below 0 stands in the middle of its ends.
TEST(Evaluation, ErrorsOfPlacesHoldBelow0) {
  std::mt19937_64 random(2);
  std::normal_distribution<double> noise;
  std::vector<double> centres;
  for (double mz = 103.0; mz < 897.0; mz += 4.0)
    centres.push_back(mz + std::uniform_real_distribution<double>(0.0, 0.05)(random));
  std::string text;
  for (int i = 0; i < 16000; ++i) {
    const double mz = 100.0 + 0.05 * i;
    double y = noise(random) - 5000.0;
    for (const double centre : centres) y += Line(mz, centre, 100.0, 0.25);
    text += fmt::format("{:.2f} {:.4f}\n", mz, y);
  }
  const Outcome outcome = Evaluate(text, {"--smooth", "off", "--sn", "20"});
  ASSERT_EQ(LinesOf(outcome.out).size(), centres.size() + 1);
  double squares = 0.0;
  for (std::size_t i = 0; i < centres.size(); ++i)
    squares += std::pow((ColumnOf(outcome, "mz", i) - centres[i]) / ColumnOf(outcome, "mz_se", i), 2.0);
  const double rms = std::sqrt(squares / static_cast<double>(centres.size()));
  EXPECT_GT(rms, 0.85);
  EXPECT_LT(rms, 1.15);
}

// Three lines with a skirt of 0.2 % of their height.
double WithSkirts(double mz) {
  double mean = 5.0;
  for (const double centre : {150.0, 250.0, 350.0})
    mean += Line(mz, centre, 1e5, 0.6) + 200.0 * std::exp(-std::abs(mz - centre) / 1.5);
  return mean;
}

TEST(FlankPeaks, AreLeftOutAndTold) {
  const Outcome outcome = Evaluate(Counted(WithSkirts));
  EXPECT_LE(RowsOf(outcome).size(), 5U);
  EXPECT_THAT(outcome.err, HasSubstr(" left out that rise"));
  EXPECT_THAT(outcome.err, HasSubstr(" no higher than noise does there; --min-rise 0 keeps "));
}

// The filter swings below the foot of a strong line; beside that its skirt looks like a peak three widths
// wide.
TEST(FlankPeaks, ThatTheFilterMakesBesideAStrongLineAreLeftOut) {
  const auto mean = [](double mz) {
    double sum = 5.0;
    for (const double centre : {150.0, 250.0, 350.0})
      sum += Line(mz, centre, 1e6, 0.6) + 1e3 / (1.0 + std::pow((mz - centre) / 3.0, 2.0));
    return sum;
  };
  const auto rows = RowsOf(Evaluate(Counted(mean)));
  EXPECT_EQ(std::ranges::count_if(
                rows, [](const auto& row) { return std::abs(std::remainder(row[3] - 50.0, 100.0)) < 4.0; }),
            3);
}

TEST(FlankPeaks, StayIfAskedFor) {
  const Outcome outcome = Evaluate(Counted(WithSkirts), {"--min-rise", "0"});
  EXPECT_GT(RowsOf(outcome).size(), 7U);
  EXPECT_THAT(outcome.err, Not(HasSubstr("left out that rise")));
}

TEST(FlankPeaks, AreNoWeakLinesOnEvenBackground) {
  for (const double background : {0.01, 0.5, 5.0}) {
    const auto mean = [&](double mz) {
      double sum = background;
      for (double centre = 120.0; centre < 400.0; centre += 20.0)
        sum += Line(mz, centre, std::max(4.0, 4.0 * std::sqrt(background)), 0.6);
      return sum;
    };
    const std::string text = Counted(mean);
    EXPECT_EQ(Evaluate(text).out, Evaluate(text, {"--min-rise", "0"}).out) << background;
  }
}

// What was measured has the background still, and the smoothed curve has not.
TEST(FlankPeaks, AreNoLinesOverABaselineThatIsSubtracted) {
  const auto mean = [](double mz) {
    return 320.0 + Line(mz, 150, 500, 0.6) + Line(mz, 250, 200, 0.6) + Line(mz, 350, 3000, 0.6);
  };
  const Outcome plain = Evaluate(Counted(mean));
  const Outcome subtracted = Evaluate(Counted(mean), {"--subtract-baseline"});
  EXPECT_EQ(RowsOf(plain).size(), 3u);
  EXPECT_EQ(RowsOf(subtracted).size(), 3u);
  EXPECT_THAT(subtracted.err, Not(HasSubstr("left out")));
  EXPECT_THAT(subtracted.err, Not(HasSubstr("lower by a fifth")));
}

TEST(FlankPeaks, TheRiseMayNotBeNegative) {
  for (const char* rise : {"-1", "nan", "x"}) {
    const Outcome outcome = Evaluate("100 1\n101 2\n102 1\n", {"--min-rise", rise});
    EXPECT_EQ(outcome.status, 2) << rise;
    EXPECT_THAT(outcome.err, HasSubstr("--min-rise")) << rise;
  }
}

double Distance(double mz, double spacing) { return std::abs(std::remainder(mz, spacing)); }

TEST(Windows, APeakEndsWithItsWindow) {
  const auto mean = [](double mz) { return 20.0 + Line(std::remainder(mz, 20.0), 0.0, 1e4, 0.5); };
  const std::string text = Counted(mean, 0.02, [](double mz) { return Distance(mz, 20.0) <= 0.5; });
  const auto rows = RowsOf(Evaluate(text));
  EXPECT_GE(rows.size(), 10U);
  for (const auto& row : rows) EXPECT_NEAR(row[5], 1e4 * 0.5 * 1.0645, 600.0) << "m/z " << row[3];
}

TEST(Windows, ThatAreTooShortAreTold) {
  const auto mean = [](double mz) { return 20.0 + Line(std::remainder(mz, 20.0), 0.0, 1e4, 0.5); };
  const std::string text = Counted(mean, 0.02, [](double mz) { return Distance(mz, 20.0) <= 0.3; });
  const Outcome outcome = Evaluate(text, {"--smooth", "savgol:25", "--sn", "1"});
  EXPECT_THAT(outcome.err,
              HasSubstr("1 spectrum with peaks in windows of points that are too short for them or "
                        "the smoothing (first at scan 1, m/z "));
}

TEST(NoiseOfPeaks, IsToldWhereWindowsLeaveNoBackground) {
  const auto mean = [](double mz) { return 5.0 + Line(std::remainder(mz, 40.0), 0.0, 1e5, 0.45); };
  const std::string text = Counted(mean, 0.02, [](double mz) { return Distance(mz, 40.0) <= 0.3; });
  EXPECT_THAT(Evaluate(text).err,
              HasSubstr("1 spectrum with noise far larger than neighbouring points scatter (first at "
                        "scan 1), as where peaks leave no background; weak peaks may be missed\n"));
}

TEST(NoiseOfPeaks, IsToldWhereALineAtEveryMassLeavesNoBackground) {
  const auto mean = [](double mz) { return 1.0 + Line(std::remainder(mz, 1.0), 0.0, 100.0, 0.5); };
  const Outcome outcome = Evaluate(Counted(mean), {"--noise-limit", "0"});
  EXPECT_TRUE(RowsOf(outcome).empty());
  EXPECT_THAT(outcome.err, HasSubstr("noise far larger than neighbouring points scatter"));
}

TEST(ShotLimit, FindsALineAtEveryMassAndTellsHow) {
  const auto mean = [](double mz) {
    double sum = 1.0;
    for (double mass = std::floor(mz) - 1.0; mass < mz + 2.0; ++mass)
      sum += Line(mz, mass, 100.0 * std::pow(1.0 + std::fmod(mass, 5.0), 2.0), 0.5);
    return sum;
  };
  const std::string text = Counted(mean);
  EXPECT_LT(RowsOf(Evaluate(text, {"--noise-limit", "0"})).size(), 250U);
  const Outcome outcome = Evaluate(text);
  EXPECT_GE(RowsOf(outcome).size(), 280U);
  EXPECT_THAT(outcome.err,
              HasSubstr("1 spectrum with lines so close that the noise was taken from the counts "
                        "between them; --noise-limit 0 leaves it as --noise finds it"));
}

TEST(ShotLimit, MayNotBeNegative) {
  for (const char* limit : {"-1", "nan", "x"}) {
    const Outcome outcome = Evaluate("100 1\n101 2\n102 1\n", {"--noise-limit", limit});
    EXPECT_EQ(outcome.status, 2) << limit;
    EXPECT_THAT(outcome.err, HasSubstr("--noise-limit")) << limit;
  }
}

// A smoothed curve that the filter's swing has cut to 0 in front of a bump of 58, where `measured` were
// counted.
TslTool::LoadedSpectrum WithSwing(double measured) {
  TslTool::LoadedSpectrum loaded;
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  for (int i = 0; i < 100; ++i) {
    spectrum.xAxis.push_back(500.0 + 0.05 * i);
    spectrum.yAxis.push_back(i < 45 ? 0.0 : std::max(5.0, 58.0 - std::abs(i - 50)));
    loaded.measured.push_back(i < 45 ? measured : spectrum.yAxis.back());
  }
  spectrum.smoothParams.Alg = TslBL::SmoothParams::SavitzkyGolay;
  spectrum.smoothParams.Steps = {{0.0, 13}};
  spectrum.evals.emplace_back(spectrum.smoothParams);
  spectrum.AddStatus(TslBL::Curve::STATUS_SMOOTHED);
  TslBL::PeakInfo peak;
  peak.startIdx = 43;
  peak.apexIdx = 50;
  peak.apexAmpl = 58.0;
  peak.endIdx = 98;
  spectrum.peaks.push_back(peak);
  return loaded;
}

TEST(FlankPeaks, AreKnownWhereTheFilterSwingsBelowZero) {
  TslTool::LoadedSpectrum onFlank = WithSwing(200.0);
  EXPECT_EQ(TslTool::LeaveOutFlankPeaks(onFlank, 2.5), 1U);
  TslTool::LoadedSpectrum alone = WithSwing(0.0);
  EXPECT_EQ(TslTool::LeaveOutFlankPeaks(alone, 2.5), 0U);
  EXPECT_EQ(alone.spectrum->peaks.size(), 1U);
}

// A peak of 20 points whose foot, 60 high, is divided at `valley` by a bump that ends at 90.
TslTool::LoadedSpectrum WithDividedFoot(std::uint32_t valley, std::uint32_t bump) {
  TslTool::LoadedSpectrum loaded = WithSwing(0.0);
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  for (std::uint32_t i = 0; i < 100; ++i) spectrum.yAxis[i] = Line(i, 40.0, 1000.0, 20.0);
  for (std::uint32_t i = 55; i < 90; ++i) spectrum.yAxis[i] += 60.0;
  loaded.measured = spectrum.yAxis;
  for (std::uint32_t i = 50; i < 100; ++i) loaded.measured[i] += i % 2 == 0 ? 40.0 : -40.0;
  TslBL::PeakInfo peak;
  peak.startIdx = 5;
  peak.apexIdx = 40;
  peak.apexAmpl = 1000.0;
  peak.maxIdx = 40.0;
  peak.halfHeightLeftIdx = 30.0;
  peak.halfHeightRightIdx = 50.0;
  peak.endIdx = valley;
  TslBL::PeakInfo other;
  other.startIdx = valley;
  other.apexIdx = bump;
  other.apexAmpl = spectrum.yAxis[bump] + 1.0;
  other.endIdx = 90;
  spectrum.peaks = {peak, other};
  return loaded;
}

TEST(FlankPeaks, GiveTheFootOfAPeakBackToIt) {
  TslTool::LoadedSpectrum onFoot = WithDividedFoot(60, 65);
  ASSERT_EQ(TslTool::LeaveOutFlankPeaks(onFoot, 2.5), 1U);
  EXPECT_EQ(onFoot.spectrum->peaks[0].endIdx, 90U);
  TslTool::LoadedSpectrum farOff = WithDividedFoot(79, 83);
  ASSERT_EQ(TslTool::LeaveOutFlankPeaks(farOff, 2.5), 1U);
  EXPECT_EQ(farOff.spectrum->peaks[0].endIdx, 79U);
  TslTool::LoadedSpectrum narrow = WithDividedFoot(60, 65);
  narrow.spectrum->peaks[0].halfHeightRightIdx = 49.0;
  ASSERT_EQ(TslTool::LeaveOutFlankPeaks(narrow, 2.5), 1U);
  EXPECT_EQ(narrow.spectrum->peaks[0].endIdx, 60U);
}

TEST(FlankPeaks, DoNotDivideTheAreaOfAWideLine) {
  const auto front = [](double mz, double centre) {
    return Line(mz, centre, 600.0, mz < centre ? 2.25 : 0.75);
  };
  const auto mean = [&](double mz) {
    return 5.0 + front(std::remainder(mz, 10.0), 0.0) +
           Line(std::remainder(mz - 5.0, 10.0), 0.0, 500.0, 0.25);
  };
  const double area = 600.0 * 1.5 * 1.0645;
  int wide = 0;
  for (const auto& row : RowsOf(Evaluate(Counted(mean)))) {
    if (std::abs(std::remainder(row[3], 10.0)) > 1.0) continue;
    EXPECT_NEAR(row[5], area, 0.035 * area) << row[3];
    ++wide;
  }
  EXPECT_EQ(wide, 29);
}

// Lines of 200 over noise of 5 about `level`, cut off at 0.
std::string CutOffAtZero(double level) {
  std::mt19937_64 random(2);
  std::normal_distribution<double> noise(level, 5.0);
  std::string text;
  for (int i = 0; i < 6000; ++i) {
    const double mz = 100.0 + 0.05 * i;
    double y = noise(random);
    for (const double centre : {150.0, 220.0, 330.0}) y += Line(mz, centre, 200.0, 0.6);
    text += fmt::format("{:.2f} {:.5g}\n", mz, std::max(y, 0.0));
  }
  return text;
}

TEST(ClippedNoise, IsToldWithTheWayOut) {
  const std::string told =
      "1 spectrum whose noise was cut off at 0, which makes areas some percent too small";
  EXPECT_THAT(Evaluate(CutOffAtZero(0.0)).err, HasSubstr(told));
  EXPECT_THAT(Evaluate(CutOffAtZero(0.0), {"--baseline", "0"}).err, Not(HasSubstr("cut off")));
}

TEST(ClippedNoise, IsNoneOverABackground) {
  EXPECT_THAT(Evaluate(CutOffAtZero(15.0)).err, Not(HasSubstr("cut off")));
}

TEST(ClippedNoise, IsNotThatOfCounts) {
  const auto mean = [](double mz) { return 0.7 + Line(mz, 250.0, 100.0, 0.6); };
  EXPECT_THAT(Evaluate(Counted(mean)).err, Not(HasSubstr("cut off")));
}

TEST(StillBackground, IsToldWhereAThresholdHasTakenTheNoise) {
  std::mt19937_64 random(1);
  std::string text;
  for (int i = 0; i < 6000; ++i) {
    const double mz = 100.0 + 0.05 * i;
    const double amplitude = Line(mz, 200.0, 3000.0, 0.6) + std::normal_distribution(0.0, 20.0)(random);
    text += fmt::format("{:.2f} {:.3f}\n", mz, amplitude > 70.0 ? amplitude : 0.0);
  }
  EXPECT_THAT(Evaluate(text).err, HasSubstr("1 spectrum in which the background is level, so that any point "
                                            "above it passes for a peak (first at scan 1)"));
}

TEST(StillBackground, IsNotThatOfCountedIons) {
  const auto mean = [](double mz) { return 0.05 + Line(mz, 200.0, 300.0, 0.6); };
  EXPECT_THAT(Evaluate(Counted(mean)).err, Not(HasSubstr("level")));
}

}  // namespace
}  // namespace tests
