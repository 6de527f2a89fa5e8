#include <tslbl/closed/math/chargestate/SeriesMass.h>

#include <gtest/gtest.h>

#include <cmath>

#include "SimulatedSeries.h"

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kResolution = 2000;

struct Measured {
  std::vector<IonPeak> peaks;
  ChargeSeries series;
};

// Peaks of a molecule of 20 000 Da from charge 15 on, off by so much m/z.
Measured Of(const std::vector<double>& errors, const std::vector<double>& areas = {}) {
  Measured made;
  for (std::size_t k = 0; k < errors.size(); ++k) {
    const auto charge = static_cast<std::int32_t>(15 + k);
    const double area = areas.empty() ? 1000 : areas[k];
    made.peaks.push_back({20000.0 / charge + kProton + errors[k], area, area, 50, kResolution});
    made.series.members.push_back({charge, k, 0, 0});
  }
  UpdateMass(made.peaks, kProton, made.series);
  return made;
}

TEST(UpdateMass, IsExactWherePlacesAre) {
  for (const std::size_t count : {1U, 2U, 3U, 12U})
    EXPECT_NEAR(Of(std::vector<double>(count, 0.0)).series.mass, 20000, 1e-6) << count;
}

TEST(UpdateMass, KnowsNoErrorOfLessThanThree) {
  EXPECT_EQ(Of({0.1}).series.standardError, 0);
  EXPECT_EQ(Of({0.1, -0.1}).series.standardError, 0);
  EXPECT_EQ(Of({0.1}).series.standardDeviation, 0);
  EXPECT_GT(Of({0.1, -0.1, 0.05}).series.standardError, 0);
}

TEST(UpdateMass, WeighsAPlaceByItsCharge) {
  const ChargeSeries series = Of({0.1, -0.1}).series;
  const double low = 20000 + 15 * 0.1;
  const double high = 20000 - 16 * 0.1;
  EXPECT_NEAR(series.mass, (low / 225 + high / 256) / (1.0 / 225 + 1.0 / 256), 1e-9);
}

TEST(UpdateMass, IsHardlyMovedByAMemberThatIsFarOff) {
  std::vector<double> errors = {0.01, -0.02, 0.015, -0.01, 0.02, -0.015, 0.005, -0.005, 0.01};
  const double before = Of(errors).series.mass;
  errors[4] = 1;
  EXPECT_NEAR(Of(errors).series.mass, before, 0.25);
}

// Root mean square of deviations over standard errors, and of deviations over those of the best weights.
struct Honesty {
  double byError;
  double byBest;
};

// Errors with a part in common and one from counting, in widths, for an area of 1000.
Honesty Measure(double common, double counting, std::size_t count) {
  constexpr int kRuns = 1500;
  Random random(5);
  std::normal_distribution<double> normal(0, 1);
  double byError = 0, squares = 0, best = 0;
  for (int run = 0; run < kRuns; ++run) {
    std::vector<double> errors, areas;
    double precision = 0;
    for (std::size_t k = 0; k < count; ++k) {
      areas.push_back(1000 * std::exp(normal(random)));
      const double charge = 15.0 + static_cast<double>(k);
      const double width = 20000 / charge / kResolution;
      const double sigma = std::hypot(common, counting * width * std::sqrt(1000 / areas[k]));
      errors.push_back(sigma * normal(random));
      precision += 1 / (sigma * sigma * charge * charge);
    }
    const ChargeSeries series = Of(errors, areas).series;
    const double off = series.mass - 20000;
    squares += off * off;
    best += 1 / precision;
    byError += off / series.standardError * off / series.standardError;
  }
  return {std::sqrt(byError / kRuns), std::sqrt(squares / best)};
}

TEST(UpdateMass, ItsStandardErrorIsHonest) {
  for (const std::size_t count : {8U, 12U, 20U}) {
    for (const auto& [common, counting] : {std::pair{0.05, 0.0}, {0.0, 0.03}, {0.02, 0.03}}) {
      const Honesty found = Measure(common, counting, count);
      const std::string name = std::to_string(count) + "_" + std::to_string(static_cast<int>(1000 * common)) +
                               "_" + std::to_string(static_cast<int>(1000 * counting));
      RecordProperty("by_error_" + name, std::to_string(found.byError));
      RecordProperty("by_best_" + name, std::to_string(found.byBest));
      EXPECT_GE(found.byError, 0.9) << name;
      EXPECT_LE(found.byError, 1.2) << name;
      EXPECT_LE(found.byBest, 1.15) << name;
    }
  }
}

}  // namespace
