#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/baseline/SegmentLoader.h>
#include <tslbl/closed/math/baseline/Segments.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;

namespace {

Samples Digits(std::size_t n, std::uint32_t seed) {
  std::mt19937 random(seed);
  Samples y(n);
  for (double& v : y) v = static_cast<double>(random() % 100);
  return y;
}

// Around point i, cut off on both sides alike where an end of the curve is near.
double PlainMean(const Samples& y, std::size_t i, std::size_t points) {
  const std::size_t half = std::min({points / 2, i, y.size() - 1 - i});
  double sum = 0;
  for (std::size_t k = i - half; k <= i + half; ++k) sum += y[k];
  return sum / static_cast<double>(2 * half + 1);
}

void ExpectNaNUpToAWholeGroup(const double* array, std::size_t length) {
  for (std::size_t i = length; i < WholeGroups(length); ++i) EXPECT_TRUE(std::isnan(array[i])) << i;
}

// `residual` is the whole curve less its shape.
void ExpectSegment(const SegmentData& data, const Samples& residual, std::size_t begin, std::size_t end,
                   std::size_t points) {
  ASSERT_EQ(data.length, end - begin);
  for (std::size_t i = begin; i < end; ++i) {
    ASSERT_EQ(data.y[i - begin], residual[i]) << i;
    ASSERT_NEAR(data.mean[i - begin], PlainMean(residual, i, points), 1e-12) << i;
  }
  ExpectNaNUpToAWholeGroup(data.y, data.length);
  ExpectNaNUpToAWholeGroup(data.mean, data.length);
}

void ExpectSamples(const SegmentData& data, std::size_t points) {
  ASSERT_EQ(data.stride, std::clamp<std::size_t>(data.length / 10, 1, points));
  ASSERT_EQ(data.samples, data.length / data.stride);
  for (std::size_t j = 0; j < data.samples; ++j) {
    ASSERT_EQ(data.sample[j], data.mean[j * data.stride + data.stride / 2]) << j;
  }
  ExpectNaNUpToAWholeGroup(data.sample, data.samples);
}

void ExpectSegments(const Samples& y, const double* shape, const Samples& residual, std::size_t length,
                    std::size_t points) {
  SCOPED_TRACE(testing::Message() << "segments of " << length << ", means of " << points);
  const Segments segments(y.size(), length);
  SegmentLoader loader(y.data(), shape, y.size(), segments.Longest(), points);
  for (std::size_t k = 0; k < segments.Count(); ++k) {
    const SegmentData data = loader.Load(segments.Begin(k), segments.Begin(k + 1));
    ASSERT_NO_FATAL_FAILURE(ExpectSegment(data, residual, segments.Begin(k), segments.Begin(k + 1), points));
    ASSERT_NO_FATAL_FAILURE(ExpectSamples(data, points));
  }
}

TEST(SegmentLoader, HasThePointsWithTheirMeans) {
  const Samples y = Digits(600, 1);
  for (const std::size_t points : {1U, 3U, 5U, 15U, 17U, 31U, 63U}) {
    for (const std::size_t length : {32U, 37U, 100U, 250U, 600U}) {
      ASSERT_NO_FATAL_FAILURE(ExpectSegments(y, nullptr, y, length, points));
    }
  }
}

TEST(SegmentLoader, TakesOffTheShape) {
  const Samples y = Digits(600, 2);
  const Samples shape = Digits(600, 3);
  Samples residual;
  for (std::size_t i = 0; i < y.size(); ++i) residual.push_back(y[i] - shape[i]);
  for (const std::size_t points : {1U, 5U, 25U}) {
    ASSERT_NO_FATAL_FAILURE(ExpectSegments(y, shape.data(), residual, 60, points));
  }
}

TEST(SegmentLoader, MeansAWindowAsLongAsTheCurve) {
  for (const std::size_t n : {1U, 3U, 5U, 25U, 101U}) {
    const Samples y = Digits(n, 4);
    ASSERT_NO_FATAL_FAILURE(ExpectSegments(y, nullptr, y, n, n));
  }
}

TEST(SegmentLoader, ForgetsTheSegmentBefore) {
  const Samples y = Digits(600, 5);
  SegmentLoader loader(y.data(), nullptr, y.size(), 400, 25);
  for (const auto& [begin, end] : {std::pair{100U, 500U}, {0U, 37U}, {563U, 600U}, {200U, 230U}}) {
    const SegmentData data = loader.Load(begin, end);
    ASSERT_NO_FATAL_FAILURE(ExpectSegment(data, y, begin, end, 25));
    ASSERT_NO_FATAL_FAILURE(ExpectSamples(data, 25));
  }
}

TEST(SegmentLoader, MeansWindowsOfMoreThan65536Points) {
  const Samples y = Digits(150000, 7);
  SegmentLoader loader(y.data(), nullptr, y.size(), y.size(), 70001);
  const SegmentData data = loader.Load(0, y.size());
  for (const std::size_t i : {0U, 34999U, 35000U, 75000U, 115000U, 149000U})
    EXPECT_NEAR(data.mean[i], PlainMean(y, i, 70001), 1e-9) << i;
}

TEST(SegmentLoader, LoadsSegmentsOfLongCurves) {
  const Samples y = Digits(70001, 6);
  ASSERT_NO_FATAL_FAILURE(ExpectSegments(y, nullptr, y, 70001, 31));
  ASSERT_NO_FATAL_FAILURE(ExpectSegments(y, nullptr, y, 250, 5));
}

}  // namespace
