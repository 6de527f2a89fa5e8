// What docs/numerics.md tells of overlapped peaks: a thousand groups of each kind, of two to five peaks that
// are 12 points across.
//
// Tests: FitPeaks.cpp, InitialEstimates.cpp.
#include <gtest/gtest.h>

#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <tslbl/closed/math/overlap/InitialEstimates.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <cstdlib>
#include <string>

#include "CramerRao.h"
#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

int GroupCount() {
  const char* told = std::getenv("TSLBL_GROUPS");
  return told != nullptr ? std::atoi(told) : 120;
}

const int kGroups = GroupCount();
constexpr double kFwhm = 12;

std::vector<SimulatedGroup> Groups(GroupRecipe recipe, int count = GroupCount()) {
  Random random(5);
  std::vector<SimulatedGroup> groups;
  for (int k = 0; k < count; ++k) {
    recipe.peaks = 2 + static_cast<std::size_t>(k % 4);
    groups.push_back(SimulateGroup(recipe, random));
  }
  return groups;
}

void Tell(const std::string& name, double value) {
  testing::Test::RecordProperty(name, std::to_string(value));
}

std::string At(const std::string& what, double spacing) {
  return what + "_" + std::to_string(static_cast<int>(std::lround(100 * spacing)));
}

// ---- How many peaks, and where

bool IsRight(const SimulatedGroup& group, double spacing) {
  const std::vector<std::int32_t> places = InitialEstimates(true, 3, group.y);
  if (places.size() != group.Peaks()) return false;
  for (std::size_t k = 0; k < places.size(); ++k)
    if (std::abs(places[k] - group.centres[k]) > 0.35 * spacing * kFwhm) return false;
  return true;
}

double ShareRight(double signalToNoise, double spacing) {
  const auto groups = Groups({.spacing = spacing, .signalToNoise = signalToNoise});
  const auto right =
      std::ranges::count_if(groups, [&](const auto& group) { return IsRight(group, spacing); });
  return static_cast<double>(right) / kGroups;
}

TEST(InitialEstimatesAccuracy, NumberAndPlacesAreRight) {
  for (const double signalToNoise : {20.0, 50.0, 100.0, 200.0})
    for (const double spacing : {0.7, 0.8, 0.9, 1.0, 1.25, 1.5, 2.0})
      Tell("sn" + std::to_string(static_cast<int>(signalToNoise)) + At("", spacing),
           ShareRight(signalToNoise, spacing));
  EXPECT_GE(ShareRight(50, 1.0), 0.93);
  EXPECT_GE(ShareRight(50, 1.25), 0.98);
  EXPECT_EQ(ShareRight(50, 1.5), 1);
  EXPECT_EQ(ShareRight(50, 2.0), 1);
}

struct Shape {
  const char* name;
  double (*at)(double u);  // in standard deviations
  double mostSplit;
};

constexpr Shape kShapes[] = {
    {"gaussian", [](double u) { return std::exp(-0.5 * u * u); }, 0.02},
    {"tailing", [](double u) { return ShapeAt(u, 0.9, 1.15); }, 0.03},
    {"lorentzian_foot", [](double u) { return 0.93 * std::exp(-0.5 * u * u) + 0.07 / (1 + u * u / 1.4); },
     0.03},
    {"flat_top", [](double u) { return std::exp(-0.5 * std::pow(std::abs(u) / 1.08, 2.5)); }, 0.2},
};

// Of single peaks that come through a Savitzky-Golay filter of this width, 0 for those that come as they are.
double ShareSplit(const Shape& shape, double signalToNoise, std::uint32_t filter = 0) {
  constexpr std::uint32_t kPoints = 45;
  Random random(9);
  int split = 0;
  for (int k = 0; k < kGroups; ++k) {
    SimulatedGroup group;
    const double height = signalToNoise * signalToNoise;
    const double top = 22 + Between(random, 0, 1);
    for (std::uint32_t i = 0; i < kPoints; ++i)
      group.mean.push_back(height * shape.at((i - top) * kFwhmPerSigma / kFwhm) + 5 + 0.005 * height);
    CountIons(group, random);
    std::vector<double> y(kPoints);
    SmoothSavitzkyGolay(group.y.data(), kPoints, 0, kPoints, filter, 2, y.data());
    split += InitialEstimates(filter == 0, 3, y).size() > 1;
  }
  return static_cast<double>(split) / kGroups;
}

std::string Named(const Shape& shape, double signalToNoise) {
  return std::string(shape.name) + "_" + std::to_string(static_cast<int>(signalToNoise));
}

TEST(InitialEstimatesAccuracy, ASinglePeakStaysOne) {
  for (const Shape& shape : kShapes) {
    for (const double signalToNoise : {5.0, 10.0, 20.0, 50.0, 100.0, 200.0}) {
      const double share = ShareSplit(shape, signalToNoise);
      Tell(Named(shape, signalToNoise), share);
      EXPECT_LE(share, shape.mostSplit) << Named(shape, signalToNoise);
    }
  }
}

TEST(InitialEstimatesAccuracy, ASinglePeakOfASmoothedCurveMostlyStaysOneWhereIonsAreMany) {
  for (const std::uint32_t filter : {7U, 15U}) {
    for (const Shape& shape : {kShapes[0], kShapes[1]}) {
      for (const double signalToNoise : {5.0, 10.0, 20.0, 50.0, 100.0, 200.0}) {
        const double share = ShareSplit(shape, signalToNoise, filter);
        Tell("filter" + std::to_string(filter) + "_" + Named(shape, signalToNoise), share);
        const double most = signalToNoise < 20 ? 1.0 : filter == 7 ? 0.05 : 0.2;
        EXPECT_LE(share, most) << Named(shape, signalToNoise);
      }
    }
  }
}

// ---- How well they are fitted

// Root mean squares over all peaks.
struct Deviations {
  double centre = 0;       // FWHM
  double area = 0;         // of the area
  double centreBound = 0;  // Cramer-Rao bounds
  double areaBound = 0;
  double centreError = 0;  // standard errors that the fit tells
  double areaError = 0;
  double methods = 0;  // between the two, in FWHM
  int misplaced = 0;   // groups without an answer, or with a peak more than a quarter FWHM off
};

// Off by up to 0.15 FWHM, as the width by up to 15 %.
OverlapGroup StartOf(const SimulatedGroup& group, std::vector<std::int32_t>& apexes, Random& random) {
  for (const double centre : group.centres)
    apexes.push_back(static_cast<std::int32_t>(std::lround(centre + kFwhm * Between(random, -0.15, 0.15))));
  return {group.x, group.y, apexes, group.level, kFwhm / kFwhmPerSigma * Between(random, 0.85, 1.15)};
}

struct Sums {
  void Add(const SimulatedGroup& group, const OverlapFit& fit) {
    const std::vector<Bound> bounds = CramerRaoBounds(group);
    for (std::size_t k = 0; k < group.Peaks(); ++k) {
      const double centre = fit.sum.Centroid(k) - group.centres[k];
      const double area = fit.sum.Area(k) - group.areas[k];
      const auto square = [](double value) { return value * value; };
      of.centre += square(centre / kFwhm);
      of.area += square(area / group.areas[k]);
      of.centreBound += square(centre / bounds[k].centre);
      of.areaBound += square(area / bounds[k].area);
      of.centreError += square(centre / fit.errors[k].centroid);
      of.areaError += square(area / fit.errors[k].area);
      ++peaks;
    }
  }

  Deviations Roots() const {
    Deviations roots = of;
    for (double* value : {&roots.centre, &roots.area, &roots.centreBound, &roots.areaBound,
                          &roots.centreError, &roots.areaError})
      *value = std::sqrt(*value / peaks);
    return roots;
  }

  Deviations of;
  int peaks = 0;
};

bool IsMisplaced(const SimulatedGroup& group, const std::optional<OverlapFit>& fit) {
  if (!fit) return true;
  for (std::size_t k = 0; k < group.Peaks(); ++k)
    if (std::abs(fit->sum.Centroid(k) - group.centres[k]) > kFwhm / 4) return true;
  return false;
}

Deviations Measure(const GroupRecipe& recipe, FitMethod method = FitMethod::LevenbergMarquardt,
                   int count = GroupCount()) {
  Random random(11);
  Sums sums;
  for (const SimulatedGroup& group : Groups(recipe, count)) {
    std::vector<std::int32_t> apexes;
    const auto fit = FitOverlap(method, StartOf(group, apexes, random));
    sums.of.misplaced += IsMisplaced(group, fit);
    if (fit) sums.Add(group, *fit);
  }
  return sums.Roots();
}

void TellAll(const std::string& name, const Deviations& found) {
  Tell(name + "_centre", found.centre);
  Tell(name + "_area", found.area);
  Tell(name + "_centre_by_bound", found.centreBound);
  Tell(name + "_area_by_bound", found.areaBound);
  Tell(name + "_centre_by_error", found.centreError);
  Tell(name + "_area_by_error", found.areaError);
  Tell(name + "_misplaced", found.misplaced);
}

void ExpectHonest(const Deviations& found) {
  for (const double ratio : {found.centreError, found.areaError}) {
    EXPECT_GE(ratio, 0.9);
    EXPECT_LE(ratio, 1.15);
  }
}

TEST(FitPeaksAccuracy, IsNearTheBoundWhereWidthsAreEqual) {
  for (const double spacing : {0.8, 1.0, 1.25, 1.5, 2.0}) {
    const Deviations found = Measure({.spacing = spacing, .signalToNoise = 100});
    TellAll(At("equal", spacing), found);
    if (spacing < 1) continue;
    EXPECT_EQ(found.misplaced, 0);
    EXPECT_LE(found.centre, spacing < 1.5 ? 0.012 : 0.0035);
    EXPECT_LE(found.area, spacing < 1.5 ? 0.025 : 0.008);
    EXPECT_LE(found.centreBound, 1.1);
    EXPECT_LE(found.areaBound, 1.1);
    ExpectHonest(found);
  }
}

TEST(FitPeaksAccuracy, IsNearTheBoundAtAnySignalToNoiseRatio) {
  for (const double signalToNoise : {20.0, 50.0, 200.0}) {
    const Deviations found = Measure({.spacing = 1.25, .signalToNoise = signalToNoise});
    TellAll("sn" + std::to_string(static_cast<int>(signalToNoise)), found);
    EXPECT_LE(found.centreBound, 1.15);
    EXPECT_LE(found.areaBound, 1.15);
    ExpectHonest(found);
  }
}

TEST(FitPeaksAccuracy, HoldsForPeaksThatTail) {
  for (const double spacing : {1.0, 1.25, 1.5, 2.0}) {
    const Deviations found = Measure({.spacing = spacing, .signalToNoise = 100, .left = 0.9, .right = 1.15});
    TellAll(At("tailing", spacing), found);
    EXPECT_LE(found.area, 0.05);
    ExpectHonest(found);
  }
}

TEST(FitPeaksAccuracy, HoldsForWidthsThatDifferWherePeaksArePartedEnough) {
  for (const double spacing : {1.0, 1.25, 1.5, 2.0}) {
    const Deviations found = Measure({.spacing = spacing, .signalToNoise = 100, .widthChange = 0.03});
    TellAll(At("different", spacing), found);
    EXPECT_LE(found.area, spacing < 1.5 ? 0.06 : 0.008);
  }
}

TEST(FitPeaksAccuracy, IsThatOfBothMethods) {
  for (const double spacing : {1.0, 1.5}) {
    Random random(11);
    double worst = 0;
    double squares = 0;
    int peaks = 0;
    for (const SimulatedGroup& group : Groups({.spacing = spacing, .signalToNoise = 100}, 100)) {
      std::vector<std::int32_t> apexes;
      const OverlapGroup start = StartOf(group, apexes, random);
      const auto one = FitOverlap(FitMethod::LevenbergMarquardt, start);
      const auto other = FitOverlap(FitMethod::HookeJeeves, start);
      ASSERT_TRUE(one && other);
      for (std::size_t k = 0; k < group.Peaks(); ++k, ++peaks) {
        const double difference = std::abs(one->sum.Centroid(k) - other->sum.Centroid(k)) / kFwhm;
        worst = std::max(worst, difference);
        squares += difference * difference;
      }
    }
    Tell(At("worst", spacing), worst);
    Tell(At("rms", spacing), std::sqrt(squares / peaks));
    EXPECT_LE(worst, 0.005);
  }
}

}  // namespace
