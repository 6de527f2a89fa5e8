// Held against simulated lines of Poisson counts, whose true places, heights and areas are known.
#include <tslbl/curve/PeakErrors.h>

#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/curve/FilterGain.h>
#include <tslbl/curve/FilterWeights.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakArea.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>

#include <curve/TestCurve.h>
#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>

using namespace TslBL;
using namespace tests;

namespace {

constexpr double kStep = 0.05;

struct Case {
  double width;   // points across a line
  double height;  // counts
  double background;
  std::uint32_t window;  // 0: no smoothing
  bool top = false;      // the place is the maximum
};

// (measured - true) / standard error of many lines.
struct Deviations {
  std::vector<double> place, height, area;
  std::vector<double> shift;  // of the place, in units of the x axis
};

double RmsOf(const std::vector<double>& values) {
  double sum = 0.0;
  for (const double value : values) sum += value * value;
  return std::sqrt(sum / static_cast<double>(values.size()));
}

double MeanOf(const std::vector<double>& values) {
  double sum = 0.0;
  for (const double value : values) sum += value;
  return sum / static_cast<double>(values.size());
}

SmoothParams SavitzkyGolay(std::uint32_t window) {
  SmoothParams p;
  p.Alg = SmoothParams::SavitzkyGolay;
  p.Steps = {{0.0, window}};
  return p;
}

std::vector<CurveEval> ChainOf(const Case& c) {
  std::vector<CurveEval> chain;
  if (c.window > 0) chain.emplace_back(SavitzkyGolay(c.window));
  BaselineParams baseline;
  NoiseParams noise;
  baseline.SegSize = noise.SegSize = 480;
  PeakDetectParams detect = PeakDetectParams::DefaultMS();
  detect.Retention = 30.0;
  detect.MaxValley = 50.0;
  detect.SN = 5.0;
  if (c.top) detect.RetentionType = PeakDetectParams::PeakTop;
  for (const CurveEval& eval : {CurveEval(baseline), CurveEval(noise), CurveEval(detect)})
    chain.push_back(eval);
  return chain;
}

// A curve of lines, their centres in points.
TestCurve Simulate(const Case& c, std::mt19937_64& random, std::vector<double>& centres) {
  constexpr int kPoints = 4000;
  const double sigma = c.width / 2.3548;
  const double spacing = std::max(12.0 * c.width, 80.0);
  for (double centre = spacing; centre < kPoints - spacing; centre += spacing)
    centres.push_back(centre + std::uniform_real_distribution<double>(-0.5, 0.5)(random));
  TestCurve curve;
  for (int i = 0; i < kPoints; ++i) {
    double mean = c.background;
    for (const double centre : centres)
      mean += c.height * std::exp(-0.5 * std::pow((i - centre) / sigma, 2.0));
    curve.xAxis.push_back(100.0 + kStep * i);
    curve.yAxis.push_back(std::poisson_distribution<int>(mean)(random));
  }
  curve.AddStatus(Curve::STATUS_X);
  curve.AddStatus(Curve::STATUS_Y);
  return curve;
}

// The counts themselves, averaged over a third of the filter, are the best that is known of their variance.
std::vector<double> VarianceOf(const std::vector<double>& counts, std::uint32_t window) {
  const std::size_t half = (window / 3 | 1U) / 2;
  std::vector<double> variance;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const std::size_t from = i - std::min(i, half);
    const std::size_t to = std::min(i + half + 1, counts.size());
    double sum = 0.0;
    for (std::size_t k = from; k < to; ++k) sum += counts[k];
    variance.push_back(std::max(sum / static_cast<double>(to - from), 0.05));
  }
  return variance;
}

// The nearest one, if it is within `reach` points.
std::optional<std::uint32_t> PeakAt(const Curve& curve, double centre, double reach) {
  std::optional<std::uint32_t> nearest;
  for (std::uint32_t i = 0; i < curve.peaks.size(); ++i) {
    const double distance = std::abs(curve.peaks[i].ReportedIdx() - centre);
    if (distance > reach) continue;
    reach = distance;
    nearest = i;
  }
  return nearest;
}

Deviations DeviationsOf(const Case& c, std::size_t lines = 300) {
  Deviations deviations;
  std::mt19937_64 random(7);
  const std::vector<double> filter =
      c.window > 0 ? QFilterWeights(SavitzkyGolay(c.window)) : std::vector{1.0};
  const FilterGain gain(filter);
  const double area = c.height * c.width / 2.3548 * std::sqrt(2.0 * M_PI) * kStep;
  while (deviations.place.size() < lines) {
    std::vector<double> centres;
    TestCurve curve = Simulate(c, random, centres);
    const std::vector<double> variance = VarianceOf(curve.yAxis, c.window);
    Changed changed;
    std::wstring error;
    EXPECT_TRUE(ExecuteCurveEvals(curve, ChainOf(c), changed, error));
    PeakErrorEstimator estimator(curve, variance, filter);
    for (const double centre : centres) {
      const std::optional<std::uint32_t> row = PeakAt(curve, centre, 0.5 * c.width);
      if (!row) continue;
      const PeakInfo& peak = curve.peaks[*row];
      const PeakErrors errors = estimator.Of(*row);
      const double left = gain.Of(peak.halfHeightRightIdx - peak.halfHeightLeftIdx);
      deviations.shift.push_back((peak.ReportedIdx() - centre) * kStep);
      deviations.place.push_back((peak.ReportedIdx() - centre) * kStep / errors.x);
      deviations.height.push_back(((peak.ReportedAmpl() - peak.baselineAmpl) / left - c.height) * left /
                                  errors.ampl);
      deviations.area.push_back((QWholePeakArea(curve, *row) - area) / errors.area);
    }
  }
  return deviations;
}

// Standard error of the place, as it follows from a line without noise.
double ErrorWithoutNoise(const Case& c) {
  TestCurve curve = CurveOf("");
  const double sigma = c.width / 2.3548;
  for (int i = 0; i < 1000; ++i) {
    curve.xAxis.push_back(100.0 + kStep * i);
    curve.yAxis.push_back(c.background + c.height * std::exp(-0.5 * std::pow((i - 500) / sigma, 2.0)));
  }
  const std::vector<double> variance = curve.yAxis;
  Changed changed;
  std::wstring error;
  EXPECT_TRUE(ExecuteCurveEvals(curve, ChainOf(c), changed, error));
  const std::vector<double> filter = QFilterWeights(SavitzkyGolay(c.window));
  PeakErrorEstimator estimator(curve, variance, filter);
  return estimator.Of(PeakAt(curve, 500.0, 1.0).value()).x;
}

constexpr Case kCases[] = {{12, 30, 5, 13},    {12, 100, 5, 13}, {12, 1000, 5, 13}, {12, 1000, 0.2, 13},
                           {12, 1000, 50, 13}, {5, 100, 5, 5},   {5, 1000, 5, 5},   {8, 300, 5, 9},
                           {30, 300, 5, 33},   {3.5, 300, 5, 0}, {3.5, 1000, 5, 0}};

}  // namespace

TEST(PeakErrors, AreTheSpreadOfPlaces) {
  for (const Case& c : kCases) {
    const auto place = DeviationsOf(c).place;
    EXPECT_NEAR(RmsOf(place), 1.0, 0.15) << c.width << " points, " << c.height << " counts";
    EXPECT_NEAR(MeanOf(place), 0.0, 0.3) << c.width << " points, " << c.height << " counts";
  }
}

TEST(PeakErrors, AreTheSpreadOfHeightsAboutTheTrueOne) {
  for (const Case& c : kCases) {
    const auto height = DeviationsOf(c).height;
    EXPECT_NEAR(RmsOf(height), 1.0, 0.15) << c.width << " points, " << c.height << " counts";
    EXPECT_NEAR(MeanOf(height), 0.0, 0.3) << c.width << " points, " << c.height << " counts";
  }
}

TEST(PeakErrors, AreTheSpreadOfAreas) {
  for (const Case& c : kCases) {
    const auto area = DeviationsOf(c).area;
    EXPECT_NEAR(RmsOf(area), 1.0, 0.15) << c.width << " points, " << c.height << " counts";
    EXPECT_NEAR(MeanOf(area), 0.0, 0.3) << c.width << " points, " << c.height << " counts";
  }
}

TEST(PeakErrors, OfATopAreItsSpread) {
  for (const Case& c : {Case{12, 300, 5, 13, true}, Case{8, 1000, 5, 9, true}})
    EXPECT_NEAR(RmsOf(DeviationsOf(c).place), 1.0, 0.2) << c.width;
}

// Below 100 ions height and width, from which an error follows, are uncertain themselves.
TEST(PeakErrors, HoldWhereIonsAreFew) {
  struct Few {
    double ions;
    double most;
  };
  for (const Few& few : {Few{25, 1.65}, Few{50, 1.4}, Few{100, 1.15}, Few{300, 1.15}})
    for (const bool top : {false, true}) {
      const Case c{12, few.ions * 2.3548 / (12.0 * std::sqrt(2.0 * M_PI)), 0.01, 13, top};
      const Deviations deviations = DeviationsOf(c, 800);
      const double rms = RmsOf(deviations.place);
      const std::string name = (top ? "top_" : "centroid_") + std::to_string(std::lround(few.ions));
      EXPECT_GT(rms, 0.85) << name;
      EXPECT_LT(rms, few.most) << name;
      RecordProperty(name, std::to_string(rms));
      RecordProperty(name + "_spread", std::to_string(RmsOf(deviations.shift) / ErrorWithoutNoise(c)));
    }
}

// The spread of centroids over the error that follows from the line without noise.
TEST(PeakErrors, OfALineWithoutNoiseAreTheSpread) {
  for (const double height : {8.0, 80.0, 800.0}) {
    const Case c{12, height, 0.2, 13};
    EXPECT_NEAR(RmsOf(DeviationsOf(c).shift) / ErrorWithoutNoise(c), 1.0, 0.1) << height << " counts";
  }
}

TEST(PeakErrors, OfARowWithoutLimitsOnTheCurveAreUnknown) {
  TestCurve curve = CurveOf("0 1 5 1 0");
  curve.xAxis = Values("1 2 3 4 5");
  PeakInfo peak;
  peak.startIdx = 1;
  peak.endIdx = 9;
  curve.peaks.push_back(peak);
  const std::vector<double> variance(5, 1.0);
  const double filter[] = {1.0};
  PeakErrorEstimator estimator(curve, variance, filter);
  EXPECT_TRUE(std::isnan(estimator.Of(0).x));
  EXPECT_TRUE(std::isnan(estimator.Of(0).ampl));
  EXPECT_TRUE(std::isnan(estimator.Of(0).area));
  EXPECT_THROW(estimator.Of(1), std::out_of_range);
}

TEST(PeakErrors, OfThePlaceOfARowWithoutHeightAreUnknown) {
  TestCurve curve = CurveOf("0 1 5 1 0 0 0 0");
  PeakInfo peak;
  peak.endIdx = 4;
  peak.areaStartIdx = 1.0;
  peak.areaEndIdx = 3.0;
  peak.centroidIdx = peak.maxIdx = peak.halfHeightLeftIdx = peak.halfHeightRightIdx = 2.0;
  peak.maxAmpl = peak.baselineAmpl = 5.0;
  curve.peaks.assign(2, peak);
  curve.peaks[1].useMax = true;
  curve.peakDetectParams.Retention = 30.0;
  const std::vector<double> variance(8, 1.0);
  const double filter[] = {1.0};
  PeakErrorEstimator estimator(curve, variance, filter);
  for (const std::uint32_t row : {0U, 1U}) {
    EXPECT_TRUE(std::isnan(estimator.Of(row).x)) << row;
    EXPECT_GT(estimator.Of(row).ampl, 0.0) << row;
  }
}

// As QFilterWeights gives none for a median.
TEST(PeakErrors, WantAnOddNumberOfWeights) {
  const TestCurve curve = CurveOf("0 1 5 1 0");
  const std::vector<double> variance(5, 1.0);
  EXPECT_THROW(PeakErrorEstimator(curve, variance, {}), std::invalid_argument);
  EXPECT_THROW(PeakErrorEstimator(curve, variance, std::vector{0.5, 0.5}), std::invalid_argument);
}
