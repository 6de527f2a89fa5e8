#include <tslbl/closed/math/peak/SplinePeak.h>

#include <OracleTable.h>
#include <gtest/gtest.h>

#include <tslbl/closed/math/smooth/Smoothing.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numeric>
#include <random>

using TslMath::SplinePeak;

namespace {

using Samples = std::vector<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kFwhmPerSigma = 2.3548200450309493;

struct Point {
  double x, y;
};

struct Range {
  double left, right;
};

struct Centroid {
  double x, y, start, end;
};

// A spline through samples at first, first + 1, ..., with results as values.
class Peak {
 public:
  explicit Peak(const Samples& y, double first = 0) {
    Samples x(y.size());
    std::iota(x.begin(), x.end(), first);
    spline_ = std::make_unique<SplinePeak>(x.data(), y.data(), static_cast<std::uint32_t>(y.size()));
  }

  Point Max() const {
    Point max{};
    spline_->PeakMax(max.x, max.y);
    return max;
  }

  Range HalfHeight(double base) const {
    Range range{};
    spline_->HalfHeightPeakWidth(base, range.left, range.right);
    return range;
  }

  Centroid CentroidAbove(double level) const {
    Centroid c{};
    spline_->PeakCentroid(level, c.x, c.y, c.start, c.end);
    return c;
  }

  double Area(double level, double baseline, const double* axis = nullptr) const {
    return spline_->PeakArea(level, baseline, axis);
  }

 private:
  std::unique_ptr<SplinePeak> spline_;
};

Samples Gaussian(double height, double centre, double fwhm, int n) {
  Samples y;
  for (int i = 0; i < n; ++i) {
    const double u = (i - centre) / (fwhm / kFwhmPerSigma);
    y.push_back(height * std::exp(-0.5 * u * u));
  }
  return y;
}

double GaussianArea(double height, double centre, double fwhm, double from, double to) {
  const double s = fwhm / kFwhmPerSigma * std::sqrt(2.0);
  return height * s * std::sqrt(M_PI) / 2 * (std::erf((to - centre) / s) - std::erf((from - centre) / s));
}

// Noise-free peaks, sampled at all places within a point and cut at 1, 1.5 and 2 FWHM.
template <typename Check>
void ForSampledGaussians(double fwhm, Check check) {
  for (double cut : {1.0, 1.5, 2.0}) {
    const int half = static_cast<int>(cut * fwhm + 0.5);
    for (double shift = -0.5; shift <= 0.5; shift += 0.01) {
      check(Peak(Gaussian(1000, half + shift, fwhm, 2 * half + 1)), half + shift, 2.0 * half);
    }
  }
}

TEST(SplinePeak, FindsTheApexOfAGaussian) {
  ForSampledGaussians(10, [](const Peak& peak, double centre, double) {
    ASSERT_NEAR(centre, peak.Max().x, 0.003);
    ASSERT_NEAR(1000, peak.Max().y, 0.05);
  });
}

TEST(SplinePeak, FindsTheWidthOfAGaussian) {
  ForSampledGaussians(10, [](const Peak& peak, double, double) {
    ASSERT_NEAR(10, peak.HalfHeight(0).right - peak.HalfHeight(0).left, 10 * 1e-4);
  });
}

TEST(SplinePeak, FindsTheAreaOfAGaussian) {
  ForSampledGaussians(10, [](const Peak& peak, double centre, double last) {
    const double expected = GaussianArea(1000, centre, 10, 0, last);
    ASSERT_NEAR(expected, peak.Area(-1, 0), 1e-5 * expected);
  });
}

TEST(SplinePeak, FindsTheCentroidOfAGaussian) {
  ForSampledGaussians(10, [](const Peak& peak, double centre, double) {
    ASSERT_NEAR(centre, peak.CentroidAbove(600).x, 1e-4);
  });
}

// The Cramer-Rao bound of a position from Poisson counts: sigma over the root of all counts.
double SmallestPossibleError(double height, double sigma) {
  return sigma / std::sqrt(height * sigma * std::sqrt(2 * M_PI));
}

double CentroidError(double height, double fwhm, int trials) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> shift(-0.5, 0.5);
  double squares = 0;
  for (int k = 0; k < trials; ++k) {
    const double centre = 38 + shift(random);
    Samples counts = Gaussian(height, centre, fwhm, 77);
    for (double& value : counts) value = std::poisson_distribution<int>(value + 1e-9)(random);
    Samples smoothed(counts.size());
    TslMath::SmoothGaussian(counts.data(), 77, 0, 77, 5, smoothed.data());
    const Peak peak(Samples(smoothed.begin() + 20, smoothed.begin() + 57), 20);
    const double error = peak.CentroidAbove(0.5 * peak.Max().y).x - centre;
    squares += error * error;
  }
  return std::sqrt(squares / trials);
}

TEST(SplinePeak, FindsTheCentroidOfASmoothedNoisyPeakNearlyAsWellAsPossible) {
  for (double height : {50.0, 200.0, 1000.0, 10000.0}) {
    EXPECT_LE(CentroidError(height, 12, 4000), 1.45 * SmallestPossibleError(height, 12 / kFwhmPerSigma))
        << height;
  }
}

class SplineOracle {  // tests/oracles/spline_peak.py
 public:
  template <typename Check>
  void ForEach(Check check) const {
    for (std::size_t row = 0; row < results_["peak"].size(); ++row) {
      SCOPED_TRACE(testing::Message() << results_["n"][row] << " samples");
      check(Peak(SamplesOf(results_["peak"][row])), [&](const char* name) { return results_[name][row]; });
    }
  }

 private:
  Samples SamplesOf(double peak) const {
    Samples y;
    for (std::size_t i = 0; i < samples_["y"].size(); ++i) {
      if (samples_["peak"][i] == peak) y.push_back(samples_["y"][i]);
    }
    return y;
  }

  tests::OracleTable samples_{"spline_samples.csv"};
  tests::OracleTable results_{"spline_results.csv"};
};

TEST(SplinePeak, AgreesWithScipyOnTheMaximum) {
  SplineOracle().ForEach([](const Peak& peak, auto expected) {
    EXPECT_NEAR(expected("max_x"), peak.Max().x, 1e-9);
    EXPECT_NEAR(expected("max_y"), peak.Max().y, 1e-9);
  });
}

TEST(SplinePeak, AgreesWithScipyOnTheWidth) {
  SplineOracle().ForEach([](const Peak& peak, auto expected) {
    EXPECT_NEAR(expected("left"), peak.HalfHeight(expected("base")).left, 1e-9);
    EXPECT_NEAR(expected("right"), peak.HalfHeight(expected("base")).right, 1e-9);
  });
}

TEST(SplinePeak, AgreesWithScipyOnTheCentroid) {
  SplineOracle().ForEach([](const Peak& peak, auto expected) {
    const Centroid centroid = peak.CentroidAbove(expected("level"));
    EXPECT_NEAR(expected("centroid_x"), centroid.x, 1e-9);
    EXPECT_NEAR(expected("centroid_y"), centroid.y, 1e-9);
    EXPECT_NEAR(expected("start"), centroid.start, 1e-9);
    EXPECT_NEAR(expected("end"), centroid.end, 1e-9);
  });
}

TEST(SplinePeak, AgreesWithScipyOnTheArea) {
  Samples axis;
  for (int i = 0; i < 100; ++i) axis.push_back(100 + 0.05 * i + 1e-5 * i * i);
  SplineOracle().ForEach([&](const Peak& peak, auto expected) {
    const double area = expected("area");
    EXPECT_NEAR(area, peak.Area(expected("level"), expected("baseline")), 1e-10 * area);
    EXPECT_NEAR(expected("area_axis"), peak.Area(expected("level"), expected("baseline"), axis.data()),
                1e-10 * area);
  });
}

TEST(SplinePeak, ReproducesACubic) {
  Samples y;
  for (double u = 0; u < 9; ++u) y.push_back(u * (9 - u) * (u + 3));
  const Peak peak(y);
  // -u^3 + 6u^2 + 27u has its maximum where 3u^2 - 12u - 27 = 0.
  const double apex = 2 + std::sqrt(13.0);
  EXPECT_NEAR(apex, peak.Max().x, 1e-12);
  EXPECT_NEAR(apex * (9 - apex) * (apex + 3), peak.Max().y, 1e-11);
  EXPECT_NEAR(-1024 + 1024 + 864, peak.Area(-1, 0), 1e-10);
}

TEST(SplinePeak, IsTheParabolaThroughThreeSamples) {
  const Peak peak({0, 4, 6});  // 5u - u^2
  EXPECT_NEAR(2, peak.Max().x, 1e-15);
  const Peak inside({3, 4, 3}, 10);  // 4 - (u - 1)^2
  EXPECT_NEAR(11, inside.Max().x, 1e-15);
  EXPECT_NEAR(11 - std::sqrt(0.5), inside.HalfHeight(3).left, 1e-13);
  EXPECT_NEAR(8 - 2.0 / 3, inside.Area(0, 0), 1e-14);
}

TEST(SplinePeak, IsTheLineThroughTwoSamples) {
  const Peak peak({1, 3}, 7);
  EXPECT_EQ(8, peak.Max().x);
  EXPECT_NEAR(7.5, peak.HalfHeight(1).left, 1e-14);
  EXPECT_EQ(8, peak.HalfHeight(1).right);
  EXPECT_NEAR(2, peak.Area(0, 0), 1e-15);
}

TEST(SplinePeak, IsAConstantForOneSample) {
  const Peak peak({5}, 7);
  EXPECT_EQ(7, peak.Max().x);
  EXPECT_EQ(5, peak.Max().y);
  EXPECT_EQ(7, peak.HalfHeight(0).left);
  EXPECT_EQ(7, peak.CentroidAbove(1).x);
  EXPECT_EQ(5, peak.CentroidAbove(1).y);
  EXPECT_EQ(0, peak.Area(0, 0));
}

TEST(SplinePeak, GivesZerosWithoutSamples) {
  const SplinePeak peak(nullptr, nullptr, 0);
  double x = 1;
  double y = 1;
  peak.PeakMax(x, y);
  EXPECT_EQ(0, x);
  EXPECT_EQ(0, y);
  EXPECT_EQ(0, peak.PeakArea(-1, 0, nullptr));
}

TEST(SplinePeak, TakesTheHigherOfTwoMaxima) {
  EXPECT_NEAR(6, Peak({0, 1, 3, 1, 0, 2, 5, 2, 0}).Max().x, 0.1);
  EXPECT_NEAR(2, Peak({0, 2, 5, 2, 0, 1, 3, 1, 0}).Max().x, 0.1);
}

TEST(SplinePeak, TakesAnEndWhereTheCurveStillRises) {
  EXPECT_EQ(4, Peak({0, 1, 2, 4, 8}).Max().x);
  EXPECT_EQ(3, Peak({8, 4, 2, 1, 0}, 3).Max().x);
}

TEST(SplinePeak, TakesTheLeftmostOfEqualSamples) { EXPECT_EQ(0, Peak({2, 2, 2, 2, 2}).Max().x); }

TEST(SplinePeak, CountsOnlyTheHumpOfTheApexIfTheDipIsBelowTheLevel) {
  const Peak peak({0, 2, 8, 4, 1, 4, 9, 3, 0});
  EXPECT_GT(peak.CentroidAbove(3).start, 4);
  EXPECT_LT(peak.CentroidAbove(0.5).start, 1);
  EXPECT_GT(peak.CentroidAbove(0.5).end, 7);
}

TEST(SplinePeak, SeesADipBetweenTwoSamples) {
  const Samples y = {0, 6, 1, 0.9, 5, 0};  // below 0.9 between the samples 2 and 3
  const Peak peak(y);
  EXPECT_GT(peak.CentroidAbove(0.8).end, 2);
  EXPECT_LT(peak.CentroidAbove(0.8).end, 3);
}

TEST(SplinePeak, EndsASideWithoutCrossingAtTheLastSample) {
  const Peak peak({5, 8, 9, 8, 1}, 100);
  EXPECT_EQ(100, peak.CentroidAbove(3).start);
  EXPECT_LT(peak.CentroidAbove(3).end, 104);
  EXPECT_EQ(104, peak.CentroidAbove(0.5).end);
  EXPECT_EQ(100, peak.HalfHeight(0).left);
}

TEST(SplinePeak, PutsWidthAtTheApexForABaseNotBelowIt) {
  const Peak peak({0, 2, 5, 2, 0}, 10);
  for (double base : {5.0, 6.0, kInfinite, kNaN}) {
    EXPECT_EQ(peak.Max().x, peak.HalfHeight(base).left);
    EXPECT_EQ(peak.Max().x, peak.HalfHeight(base).right);
  }
}

TEST(SplinePeak, PutsCentroidAtTheApexForALevelNotBelowIt) {
  const Peak peak({0, 2, 5, 1, 0}, 10);
  for (double level : {peak.Max().y, 60.0, kInfinite, kNaN}) {
    const Centroid centroid = peak.CentroidAbove(level);
    EXPECT_EQ(peak.Max().x, centroid.x);
    EXPECT_EQ(peak.Max().y, centroid.y);
    EXPECT_EQ(peak.Max().x, centroid.start);
    EXPECT_EQ(peak.Max().x, centroid.end);
    EXPECT_EQ(0, peak.Area(level, 0));
  }
}

TEST(SplinePeak, PutsCentroidInTheMiddleWithoutPositiveWeight) {
  const Centroid centroid = Peak({-9, -7, -5, -7, -9}).CentroidAbove(-6);
  EXPECT_EQ(0.5 * (centroid.start + centroid.end), centroid.x);
}

TEST(SplinePeak, KeepsTheCentroidInsideItsRangeWhenWeightsAreNegative) {
  const Centroid centroid = Peak({-90, -50, 100, 30, 20, 10, 0}).CentroidAbove(-80);
  EXPECT_GE(centroid.x, centroid.start);
  EXPECT_LE(centroid.x, centroid.end);
}

TEST(SplinePeak, SubtractsTheBaselineOverTheWholePart) {
  const Peak peak({0, 2, 5, 2, 0});
  const Centroid part = peak.CentroidAbove(1);
  EXPECT_NEAR(peak.Area(1, 0) - 3 * (part.end - part.start), peak.Area(1, 3), 1e-13);
  EXPECT_LT(peak.Area(1, 100), 0);
}

TEST(SplinePeak, MeasuresAreaOnTheCurvesOwnAxis) {
  Samples axis;
  for (int i = 0; i < 30; ++i) axis.push_back(0.05 * i);
  const Samples y = {0, 2, 5, 2, 0};
  EXPECT_NEAR(0.05 * Peak(y).Area(1, 0), Peak(y, 20).Area(1, 0, axis.data()), 1e-14);
}

TEST(SplinePeak, MeasuresAreaInPointsForAnOriginThatIsNoIndex) {
  const Samples axis(10, 0.0);
  const Samples y = {0, 2, 5, 2, 0};
  for (double first : {-1.0, kNaN, kInfinite})
    EXPECT_EQ(Peak(y).Area(1, 0), Peak(y, first).Area(1, 0, axis.data()));
}

TEST(SplinePeak, MovesWithItsIndexes) {
  const Samples y = {0, 2, 7, 4, 1, 0};
  const double shift = 4096;
  EXPECT_NEAR(Peak(y).Max().x + shift, Peak(y, shift).Max().x, 1e-12);
  EXPECT_NEAR(Peak(y).CentroidAbove(2).x + shift, Peak(y, shift).CentroidAbove(2).x, 1e-12);
  EXPECT_EQ(Peak(y).Area(2, 0), Peak(y, shift).Area(2, 0));
}

TEST(SplinePeak, ScalesWithItsSamples) {
  Samples y = {0, 2, 7, 4, 1, 0};
  const Peak peak(y);
  for (double& value : y) value *= 1024;
  const Peak scaled(y);
  EXPECT_EQ(peak.Max().x, scaled.Max().x);
  EXPECT_EQ(1024 * peak.Max().y, scaled.Max().y);
  EXPECT_EQ(peak.HalfHeight(0).left, scaled.HalfHeight(0).left);
  EXPECT_EQ(1024 * peak.Area(1, 0), scaled.Area(1024, 0));
}

TEST(SplinePeak, MirrorsWithItsSamples) {
  Samples y = {0, 2, 7, 4, 4, 1, 0};
  const Peak peak(y);
  std::reverse(y.begin(), y.end());
  const Peak mirrored(y);
  EXPECT_NEAR(6 - peak.Max().x, mirrored.Max().x, 1e-13);
  EXPECT_NEAR(6 - peak.HalfHeight(0).left, mirrored.HalfHeight(0).right, 1e-13);
  EXPECT_NEAR(6 - peak.CentroidAbove(2).x, mirrored.CentroidAbove(2).x, 1e-13);
  EXPECT_NEAR(peak.Area(2, 1), mirrored.Area(2, 1), 1e-13);
}

TEST(SplinePeak, TakesTheSameCurveFromStackAndHeap) {
  const Samples peak64 = Gaussian(1000, 32, 10, 64);
  const Samples peak65 = Gaussian(1000, 32, 10, 65);
  EXPECT_NEAR(Peak(peak64).Max().x, Peak(peak65).Max().x, 1e-12);
  EXPECT_NEAR(Peak(peak64).Area(500, 0), Peak(peak65).Area(500, 0), 1e-9);
}

TEST(SplinePeak, TakesAWholeSpectrum) {
  const Peak peak(Gaussian(1000, 70000.25, 10, 90000));
  EXPECT_NEAR(70000.25, peak.Max().x, 0.003);
  EXPECT_NEAR(70000.25, peak.CentroidAbove(500).x, 1e-4);
  EXPECT_NEAR(10, peak.HalfHeight(0).right - peak.HalfHeight(0).left, 1e-3);
  EXPECT_NEAR(GaussianArea(1000, 70000.25, 10, 0, 90000), peak.Area(-1, 0), 1e-4);
}

TEST(SplinePeak, NeverTakesNaNForTheApex) {
  EXPECT_EQ(2, Peak({kNaN, 1, 5, 1, kNaN}).Max().x);
  EXPECT_EQ(5, Peak({kNaN, 1, 5, 1, kNaN}).Max().y);
}

void ExpectInside(const Samples& y, double level) {
  const double last = static_cast<double>(y.size() - 1);
  const Peak peak(y);
  const Centroid centroid = peak.CentroidAbove(level);
  const Range width = peak.HalfHeight(level);
  peak.Area(level, level);
  for (double x : {peak.Max().x, width.left, width.right, centroid.x, centroid.start, centroid.end}) {
    ASSERT_TRUE(x >= 0 && x <= last) << x << " of " << last;
  }
  ASSERT_LE(width.left, width.right);
  ASSERT_LE(centroid.start, centroid.x);
  ASSERT_LE(centroid.x, centroid.end);
}

TEST(SplinePeak, KeepsPositionsInsideForAnyInput) {
  const Samples odd = {kNaN, kInfinite, -kInfinite, 1e308, -1e308, 1e-320, 0.0, -0.0, 1e200,
                       1,    -1,        2,          3,     4,      5,      100, 7};
  std::mt19937 random(11);
  std::uniform_int_distribution<std::size_t> length(1, 70);
  for (int trial = 0; trial < 20000; ++trial) {
    // Every second trial is of ordinary values only.
    std::uniform_int_distribution<std::size_t> pick(trial % 2 == 0 ? 0 : 9, odd.size() - 1);
    Samples y(length(random));
    for (double& value : y) value = odd[pick(random)];
    ASSERT_NO_FATAL_FAILURE(ExpectInside(y, odd[pick(random)]));
    ASSERT_NO_FATAL_FAILURE(ExpectInside(y, odd[static_cast<std::size_t>(trial) % odd.size()]));
  }
}

}  // namespace
