#include <tslbl/overlap/GroupPoints.h>

#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <overlap/OverlapSpectrum.h>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

TEST(QGroupPoints, CountsFromTheFirstPoint) {
  const Spectrum s = SpectrumOf({1, 2, 3, 4, 5});
  const GroupPoints points = QGroupPoints(s, 1, 3);
  EXPECT_EQ(points.first, 1U);
  EXPECT_EQ(points.x, Values("0 1 2"));
  EXPECT_EQ(points.y, Values("2 3 4"));
  EXPECT_EQ(points.Count(), 3U);
  EXPECT_EQ(QGroupPoints(s, 4, 4).y, Values("5"));
}

TEST(QGroupPoints, RefusesRangesThatAreNone) {
  Spectrum s = SpectrumOf({1, 2, 3, 4, 5});
  const auto failure = [&](std::uint32_t first, std::uint32_t last) {
    return Thrown<std::logic_error>([&] { QGroupPoints(s, first, last); });
  };
  EXPECT_EQ(failure(3, 2), "Invalid group range.");
  EXPECT_EQ(failure(3, 5), "Invalid spectrum range.");
  EXPECT_EQ(failure(0, 4294967295U), "Invalid spectrum range.");
  s.yAxis.pop_back();
  EXPECT_EQ(failure(3, 4), "Invalid spectrum range.");
}

TEST(ForEachGroup, GivesRunsOfEqualNumbers) {
  std::vector<OPDEstimate> estimates(5);
  const std::uint32_t groups[] = {1, 1, 2, 1, 1};
  for (std::size_t i = 0; i < 5; ++i) estimates[i].GroupId = groups[i];
  std::vector<std::size_t> sizes;
  ForEachGroup(std::span<const OPDEstimate>(estimates), [&](auto run) { sizes.push_back(run.size()); });
  EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 1, 2}));
  ForEachGroup(std::span<const OPDEstimate>(), [](auto) { FAIL() << "there is none"; });
}
