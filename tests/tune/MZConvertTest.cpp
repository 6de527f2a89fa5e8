// Tests: PointTable.cpp.

#include <tslbl/tune/MZConvert.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

namespace {

using namespace TslBL;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

MZConvert Table(std::vector<std::pair<double, double>> points) {
  std::vector<MZCalPt> table;
  for (const auto& [mz, dac] : points) table.emplace_back(L"", mz, dac);
  return MZConvert(table);
}

std::string FailureOf(const auto& convert) {
  try {
    convert();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}
std::string MZToDACFailure(const MZConvert& table, double mz) {
  return FailureOf([&] { table.MZToDAC(mz); });
}
std::string DACToMZFailure(const MZConvert& table, double dac) {
  return FailureOf([&] { table.DACToMZ(dac); });
}

TEST(MZConvert, WithoutPointsGivesNull) {
  for (const double value : {-1.0, 0.0, 5.0, kInf}) {
    EXPECT_EQ(MZConvert().MZToDAC(value), 0.0);
    EXPECT_EQ(MZConvert().DACToMZ(value), 0.0);
  }
}

TEST(MZConvert, OfOnePointGivesThatPoint) {
  const MZConvert one = Table({{100, 2000}});
  for (const double value : {-1.0, 100.0, 5000.0}) {
    EXPECT_EQ(one.MZToDAC(value), 2000.0);
    EXPECT_EQ(one.DACToMZ(value), 100.0);
  }
}

struct Row {
  double mz, dac;
};

// Slopes 10, 20 and 40 counts per m/z; the chord's is 70/3.
const std::vector<std::pair<double, double>> kBent = {{100, 1000}, {200, 2000}, {300, 4000}, {400, 8000}};

TEST(MZConvert, FollowsTheSegments) {
  const MZConvert bent = Table(kBent);
  for (const Row& row : std::vector<Row>{
           {100, 1000}, {150, 1500}, {200, 2000}, {250, 3000}, {300, 4000}, {375, 7000}, {400, 8000}}) {
    EXPECT_EQ(bent.MZToDAC(row.mz), row.dac) << row.mz;
    EXPECT_EQ(bent.DACToMZ(row.dac), row.mz) << row.dac;
  }
}

TEST(MZConvert, ToDACGoesOnAlongTheEndSegments) {
  const MZConvert bent = Table(kBent);
  EXPECT_EQ(bent.MZToDAC(50), 500.0);
  EXPECT_EQ(bent.MZToDAC(500), 12000.0);
  EXPECT_EQ(bent.MZToDAC(-50), -500.0);
}

TEST(MZConvert, ToMZGoesOnAlongTheChordOfTheWholeTable) {
  const MZConvert bent = Table(kBent);
  EXPECT_DOUBLE_EQ(bent.DACToMZ(300), 70.0);
  EXPECT_DOUBLE_EQ(bent.DACToMZ(8700), 430.0);
}

TEST(MZConvert, OfTwoPointsInvertsOutsideTheTableToo) {
  const MZConvert line = Table({{5, 100}, {3000, 60000}});
  for (const double mz : {-100.0, 0.0, 5.0, 500.5, 3000.0, 4000.0})
    EXPECT_NEAR(line.DACToMZ(line.MZToDAC(mz)), mz, 1e-9) << mz;
}

TEST(MZConvert, OfThreePointsDoesNotInvertOutsideTheTable) {
  const MZConvert bent = Table({{100, 1000}, {200, 2000}, {300, 4000}});
  EXPECT_DOUBLE_EQ(bent.MZToDAC(400), 6000.0);
  EXPECT_DOUBLE_EQ(bent.DACToMZ(6000.0), 100.0 + 5000.0 / 15.0);
}

TEST(MZConvert, TakesPointsInAnyOrder) {
  const MZConvert sorted = Table(kBent);
  const MZConvert mixed = Table({kBent[2], kBent[0], kBent[3], kBent[1]});
  for (const double mz : {50.0, 100.0, 170.0, 299.0, 400.0, 444.0}) {
    EXPECT_EQ(mixed.MZToDAC(mz), sorted.MZToDAC(mz));
    EXPECT_EQ(mixed.DACToMZ(20 * mz), sorted.DACToMZ(20 * mz));
  }
}

TEST(MZConvert, AnInnerPointLiesOnTheSegmentBelowIt) {
  // A twin above the inner point makes the choice visible: the segment above it throws.
  const MZConvert twins = Table({{100, 1000}, {200, 2000}, {200, 2000}, {300, 3000}});
  EXPECT_EQ(twins.MZToDAC(200), 2000.0);
  EXPECT_EQ(twins.DACToMZ(2000), 200.0);
}

TEST(MZConvert, ThrowsOnASegmentOfOneMz) {
  const MZConvert pair = Table({{200, 2000}, {200, 3000}});
  EXPECT_EQ(MZToDACFailure(pair, 200), "Divide by zero error");
  EXPECT_EQ(DACToMZFailure(pair, 2500), "Divide by zero error");
}

TEST(MZConvert, ToDACBeyondAPairOfOneMzIsUnguarded) {
  const MZConvert pair = Table({{200, 2000}, {200, 3000}});
  EXPECT_TRUE(std::isinf(pair.MZToDAC(-100)));
  EXPECT_TRUE(std::isnan(pair.MZToDAC(100)));
  EXPECT_TRUE(std::isnan(pair.MZToDAC(300)));
}

TEST(MZConvert, ToMZThrowsOutsideATableOfOneMz) {
  EXPECT_EQ(DACToMZFailure(Table({{200, 2000}, {200, 3000}}), 9000), "Divide by zero error");
  EXPECT_EQ(DACToMZFailure(Table({{200, 2000}, {200, 2000}}), 1), "Divide by zero error");
}

TEST(MZConvert, AThrowLeavesTheTable) {
  const MZConvert twins = Table({{200, 2000}, {200, 2000}, {300, 3000}});
  EXPECT_EQ(MZToDACFailure(twins, 200), "Divide by zero error");
  EXPECT_EQ(DACToMZFailure(twins, 2000), "Divide by zero error");
  EXPECT_EQ(twins.MZToDAC(250), 2500.0);
  EXPECT_EQ(twins.DACToMZ(2500), 250.0);
}

TEST(MZConvert, ToDACBeyondAnEndPairOfOneMzIsNoNumber) {
  EXPECT_TRUE(std::isnan(Table({{200, 2000}, {200, 2000}, {300, 3000}}).MZToDAC(100)));
  EXPECT_TRUE(std::isnan(Table({{100, 1000}, {200, 2000}, {200, 2000}}).MZToDAC(300)));
}

TEST(MZConvert, ToMZGivesTheLowerPointWhereTheDACStandsStill) {
  EXPECT_EQ(Table({{100, 1000}, {200, 1000}}).DACToMZ(1000), 100.0);
  EXPECT_EQ(Table({{100, 1000}, {200, 1000}}).DACToMZ(5000), 100.0) << "the chord is level, too";
  EXPECT_EQ(Table({{100, 1000}, {200, 1000}, {300, 2000}}).DACToMZ(1000), 100.0);
}

TEST(MZConvert, ATableThatDoesNotRiseIsWalkedAsItStands) {
  const MZConvert falling = Table({{100, 3000}, {200, 2000}, {300, 1000}});
  EXPECT_EQ(falling.MZToDAC(250), 1500.0);
  // Every value is below the first or above the last.
  EXPECT_EQ(falling.DACToMZ(1500), 250.0);
}

TEST(MZConvert, WCalPtsReplacesTheTable) {
  MZConvert table = Table(kBent);
  table.WCalPts({{L"", 1, 2}});
  EXPECT_EQ(table.MZToDAC(100), 2.0);
  table.WCalPts({});
  EXPECT_EQ(table.MZToDAC(100), 0.0);
}

TEST(MZConvert, PointsWithoutAnMzDoNoHarm) {
  const MZConvert damaged = Table({{kNaN, 1}, {300, 3000}, {kNaN, 2}, {100, 1000}, {200, 2000}});
  EXPECT_EQ(damaged.MZToDAC(150), 1500.0);
  EXPECT_TRUE(std::isnan(Table(kBent).MZToDAC(kNaN)));
  EXPECT_TRUE(std::isnan(Table(kBent).DACToMZ(kNaN)));
}

TEST(MZConvert, IsExactAtItsPointsAndInvertsBetweenThem) {
  constexpr unsigned kSeed = 20240611;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> gap(1.0, 400.0);
  std::uniform_real_distribution<double> slope(15.0, 25.0);
  for (int round = 0; round < 200; ++round) {
    std::vector<std::pair<double, double>> points = {{5, 100}};
    for (int i = 0; i < 2 + round % 7; ++i) {
      const double step = gap(random);
      points.emplace_back(points.back().first + step, points.back().second + step * slope(random));
    }
    const MZConvert table = Table(points);
    for (const auto& [mz, dac] : points) {
      EXPECT_NEAR(table.MZToDAC(mz), dac, 1e-8);
      EXPECT_NEAR(table.DACToMZ(dac), mz, 1e-8);
    }
    std::uniform_real_distribution<double> inside(points.front().first, points.back().first);
    const double mz = inside(random);
    EXPECT_NEAR(table.DACToMZ(table.MZToDAC(mz)), mz, 1e-9);
  }
}

}  // namespace
