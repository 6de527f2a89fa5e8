#include <tslbl/closed/math/baseline/RobustLine.h>
#include <tslbl/closed/math/baseline/SegmentLoader.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include <closed/math/SampleArray.h>
#include <closed/math/SimulatedSpectrum.h>

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

RobustLine Consensus(const Samples& y, std::uint32_t points = 5, double quantum = 0) {
  const RejectionRule rule(points, 3, y.size(), quantum);
  SegmentLoader loader(y.data(), nullptr, y.size(), y.size(), rule.points);
  return ConsensusLine(loader.Load(0, y.size()), rule);
}

double At(const RobustLine& fit, std::size_t i, std::size_t n) {
  return fit.line.At(static_cast<double>(i) - 0.5 * static_cast<double>(n - 1));
}

Samples Line(std::size_t n, double start, double slope) {
  Samples y(n);
  for (std::size_t i = 0; i < n; ++i) y[i] = start + slope * static_cast<double>(i);
  return y;
}

void AddNoise(Samples& y, double sd, std::uint32_t seed) {
  std::mt19937_64 random(seed);
  std::normal_distribution<double> normal(0, sd);
  for (double& v : y) v += normal(random);
}

void ExpectLine(const RobustLine& fit, const Samples& line, double tolerance) {
  for (const std::size_t i : {std::size_t{0}, line.size() / 2, line.size() - 1})
    EXPECT_NEAR(At(fit, i, line.size()), line[i], tolerance) << i << " of " << line.size();
}

TEST(ConsensusLine, OfALineIsTheLine) {
  for (const std::size_t n : {2U, 3U, 9U, 10U, 11U, 19U, 20U, 37U, 250U, 251U, 1000U, 70001U}) {
    for (const double slope : {0.25, -0.5}) {
      const Samples line = Line(n, 5, slope);
      ExpectLine(Consensus(line), line, 1e-9 * (5 + std::abs(line.back())));
    }
  }
}

TEST(ConsensusLine, LiesUnderPeaksThatCoverLessThanHalf) {
  const Samples line = Line(250, 100, 0.2);
  for (const double centre : {20.0, 80.0, 125.0, 170.0, 235.0}) {
    Samples y = line;
    AddPeak(y, centre, 1000, 8);
    AddPeak(y, 300 - centre, 300, 5);
    ExpectLine(Consensus(y), line, 1);
  }
}

// Under a hill that begins and ends within the segment the lowest places are those beside it.
TEST(ConsensusLine, IsThatOfTheLowPlacesBesideAHill) {
  const Samples line = Line(250, 10, 0);
  Samples y = line;
  for (std::size_t i = 60; i < 180; ++i) y[i] += 40;
  ExpectLine(Consensus(y), line, 1e-9);
}

// Means over one point, so that each point is a sample.
TEST(ConsensusLine, IsThatOfTheMajorityOfManySamples) {
  Samples y(270000, 0.0);
  std::fill(y.begin(), y.begin() + 54000, 100.0);
  AddNoise(y, 1, 3);
  ExpectLine(Consensus(y, 1), Line(y.size(), 0, 0), 10);
}

TEST(ConsensusLine, HasMuchOfANoisySegmentWithinItsLimit) {
  for (std::uint32_t seed = 0; seed < 40; ++seed) {
    Samples y = Line(250, 50, 0.1);
    AddNoise(y, 3, seed);
    const RobustLine fit = Consensus(y);
    std::size_t near = 0;
    for (std::size_t i = 0; i < y.size(); ++i)
      near += std::abs(y[i] - At(fit, i, 250)) <= 3 * fit.noise ? 1 : 0;
    EXPECT_GE(near, 125U) << seed;
  }
}

// Of the lowest sample in each tenth, by the formula of the header.
double PlainFirstNoise(const Samples& y, std::size_t points) {
  SegmentLoader loader(y.data(), nullptr, y.size(), y.size(), points);
  const SegmentData data = loader.Load(0, y.size());
  const std::size_t blocks = std::min<std::size_t>(10, data.samples);
  Samples variances;
  std::size_t end = 0;
  for (std::size_t b = 0; b < blocks; ++b) {
    const std::size_t begin = end;
    end += data.samples / blocks + (b < data.samples % blocks ? 1 : 0);
    const double* lowest = std::min_element(data.sample + begin, data.sample + end);
    const auto at = static_cast<std::ptrdiff_t>(static_cast<std::size_t>(lowest - data.sample) * data.stride +
                                                data.stride / 2);
    double most = 0;
    for (const std::ptrdiff_t lag : {std::ptrdiff_t{1}, static_cast<std::ptrdiff_t>(points)}) {
      double sum = 0, count = 0;
      const auto last =
          std::min(static_cast<std::ptrdiff_t>(y.size()) - 1, at + static_cast<std::ptrdiff_t>(points));
      for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(0, at - static_cast<std::ptrdiff_t>(points));
           i + lag <= last; ++i) {
        const double step = y[static_cast<std::size_t>(i + lag)] - y[static_cast<std::size_t>(i)];
        sum += step * step;
        count += 1;
      }
      if (count > 0) most = std::max(most, sum / (2 * count));
    }
    variances.push_back(most);
  }
  std::sort(variances.begin(), variances.end());
  return variances.size() < 3 ? std::numeric_limits<double>::infinity() : std::sqrt(variances[2]);
}

TEST(ConsensusLine, TakesItsFirstNoiseFromTheThirdQuietestOfTheLowPlaces) {
  for (const std::size_t n : {12U, 25U, 37U, 99U, 250U, 1003U}) {
    for (const std::uint32_t points : {1U, 3U, 5U, 9U}) {
      Samples y = Line(n, 50, 0.1);
      AddNoise(y, 3, static_cast<std::uint32_t>(n) + points);
      EXPECT_NEAR(Consensus(y, points).noise, PlainFirstNoise(y, points), 1e-9) << n << ", " << points;
    }
  }
}

TEST(ConsensusLine, HasNoLessThanTheLeastNoise) { EXPECT_EQ(Consensus(Line(250, 5, 0), 5, 3).noise, 1.5); }

TEST(ConsensusLine, PassesOverPlacesThatAreNotFinite) {
  const Samples line = Line(250, 100, 0.2);
  Samples y = line;
  for (std::size_t i = 0; i < 60; ++i) y[i] = kNaN;
  ExpectLine(Consensus(y), line, 1e-9);
  std::reverse(y.begin(), y.end());
  ExpectLine(Consensus(y), Samples(line.rbegin(), line.rend()), 1e-9);
}

}  // namespace
