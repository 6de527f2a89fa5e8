// What docs/numerics.md tells of series whose isotopes are not resolved, measured over simulated peak lists.
//
// Tests: UnresolvedSeries.cpp, SeriesSearch.cpp, SeriesMass.cpp.
#include <gtest/gtest.h>

#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "SimulatedSeries.h"

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kSameMass = 3e-4;  // relative
constexpr int kLeastPeaks = 6;      // of a protein that must be found

UnresolvedPrefs WidePrefs() {
  UnresolvedPrefs prefs;
  prefs.minMass = 3000;
  prefs.maxMass = 120000;
  prefs.carrierMass = kProton;
  return prefs;
}

struct Score {
  double recall = 0;       // share of the proteins
  double falseSeries = 0;  // a list
  double massError = 0;    // ppm, root mean square
  double byError = 0;      // of deviations over standard errors, root mean square
};

bool IsAdduct(const ChargeSeries& series, const SimulatedList& list) {
  return std::ranges::any_of(list.proteins, [&](const SimulatedProtein& protein) {
    const double off = series.mass - protein.mass;
    return off > 2 && off < 120;
  });
}

Score Measure(const SeriesRecipe& recipe) {
  Random random(3);
  int proteins = 0, found = 0, wrong = 0, right = 0;
  double squares = 0, byError = 0;
  for (int k = 0; k < ListCount(); ++k) {
    const SimulatedList list = SeriesSimulator(recipe, random).Make();
    std::vector<ChargeSeries> series = FindAllSeries(list.peaks, WidePrefs());
    for (const SimulatedProtein& protein : list.proteins) {
      const auto hit = std::ranges::find_if(
          series, [&](const ChargeSeries& one) { return std::abs(one.mass / protein.mass - 1) < kSameMass; });
      const bool counts = protein.peaks >= kLeastPeaks;
      proteins += counts;
      if (hit == series.end()) continue;
      found += counts;
      const double off = hit->mass - protein.mass;
      squares += off / protein.mass * off / protein.mass;
      byError += off / hit->standardError * off / hit->standardError;
      ++right;
      series.erase(hit);
    }
    for (const ChargeSeries& one : series) wrong += !(recipe.adducts && IsAdduct(one, list));
  }
  return {proteins > 0 ? static_cast<double>(found) / proteins : 1, static_cast<double>(wrong) / ListCount(),
          right > 0 ? 1e6 * std::sqrt(squares / right) : 0, right > 0 ? std::sqrt(byError / right) : 0};
}

struct Case {
  const char* name;
  SeriesRecipe recipe;
  double leastRecall;
  double mostFalse;  // a list
};

constexpr double kAxis = 5e-5;

const Case kCases[] = {
    {"one_few_noise", {.noise = 0.02, .axisError = kAxis}, 0.98, 0.1},
    {"one", {.axisError = kAxis}, 0.98, 0.1},
    {"one_much_noise", {.noise = 0.3, .axisError = kAxis}, 0.97, 0.15},
    {"one_far_off", {.mzError = 0.1, .axisError = kAxis}, 0.97, 0.1},
    {"one_with_missing_charges", {.axisError = kAxis, .missing = 0.1}, 0.97, 0.1},
    {"three", {.proteins = 3, .weakest = 0.2, .axisError = kAxis}, 0.95, 0.1},
    {"six", {.proteins = 6, .weakest = 0.1, .axisError = kAxis}, 0.89, 0.2},
    {"ten", {.proteins = 10, .weakest = 0.1, .axisError = kAxis}, 0.78, 0.25},
    {"monomer_and_dimer",
     {.proteins = 2, .lowest = 12000, .highest = 40000, .axisError = kAxis, .dimer = true, .to = 2500},
     0.8,
     0.1},
    {"two_with_adducts", {.proteins = 2, .weakest = 0.33, .axisError = kAxis, .adducts = true}, 0.95, 0.2},
    {"large",
     {.lowest = 70000, .highest = 118000, .noise = 0.05, .axisError = kAxis, .from = 600},
     0.97,
     0.1},
    {"noise_alone", {.proteins = 0}, 1, 0.1},
    {"much_noise_alone", {.proteins = 0, .noise = 0.3}, 1, 0.3},
};

TEST(FindAllSeriesAccuracy, FindsTheProteinsAndNothingElse) {
  for (const Case& one : kCases) {
    const Score score = Measure(one.recipe);
    RecordProperty(std::string(one.name) + "_recall", std::to_string(score.recall));
    RecordProperty(std::string(one.name) + "_false", std::to_string(score.falseSeries));
    RecordProperty(std::string(one.name) + "_ppm", std::to_string(score.massError));
    EXPECT_GE(score.recall, one.leastRecall) << one.name;
    EXPECT_LE(score.falseSeries, one.mostFalse) << one.name;
  }
}

// As long as the axis is right.
TEST(FindAllSeriesAccuracy, MassesAreAsGoodAsTheirStandardErrorsSay) {
  for (const double mzError : {0.03, 0.05, 0.1}) {
    const Score score = Measure({.noise = 0.05, .mzError = mzError});
    const std::string name = "mz_error_" + std::to_string(static_cast<int>(1000 * mzError));
    RecordProperty(name + "_ppm", std::to_string(score.massError));
    RecordProperty(name + "_by_error", std::to_string(score.byError));
    EXPECT_LE(score.massError, 400 * mzError);
    EXPECT_GE(score.byError, 0.8) << mzError;
    EXPECT_LE(score.byError, 1.25) << mzError;
  }
}

// Myoglobin, charges 10 to 20; places scatter as the counted ions of each peak tell.
TEST(FindAllSeriesAccuracy, UsesThePrecisionThatCountingGives) {
  constexpr double kMass = 16951.5;
  constexpr double kFwhm = 0.6;
  constexpr int kRuns = 400;
  Random random(7);
  std::normal_distribution<double> normal(0, 1);
  double squares = 0, byError = 0, bound = 0;
  for (int run = 0; run < kRuns; ++run) {
    std::vector<IonPeak> peaks;
    double precision = 0;
    for (int charge = 10; charge <= 20; ++charge) {
      const double ions = 1e5 * std::exp(-0.5 * (charge - 15) * (charge - 15) / 6.0);
      const double sigma = kFwhm / 2.3548 / std::sqrt(ions);
      const double mz = kMass / charge + kProton;
      peaks.push_back({mz + sigma * normal(random), ions, ions, 100, mz / kFwhm});
      precision += 1 / (charge * charge * sigma * sigma);
    }
    const std::vector<ChargeSeries> series = FindAllSeries(peaks, WidePrefs());
    ASSERT_EQ(series.size(), 1U);
    ASSERT_EQ(series[0].members.size(), 11U);
    const double off = series[0].mass - kMass;
    squares += off * off;
    byError += off / series[0].standardError * off / series[0].standardError;
    bound += 1 / precision;
  }
  const double rms = std::sqrt(squares / kRuns);
  RecordProperty("myoglobin_rms", std::to_string(rms));
  RecordProperty("myoglobin_by_bound", std::to_string(std::sqrt(squares / bound)));
  RecordProperty("myoglobin_by_error", std::to_string(std::sqrt(byError / kRuns)));
  EXPECT_LE(rms, 0.01);
  EXPECT_LE(std::sqrt(squares / bound), 1.15);
  EXPECT_GE(std::sqrt(byError / kRuns), 0.9);
  EXPECT_LE(std::sqrt(byError / kRuns), 1.2);
}

}  // namespace
