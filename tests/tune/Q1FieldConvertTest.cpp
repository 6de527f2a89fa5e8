#include <tslbl/tune/Q1FieldConvert.h>

#include <gtest/gtest.h>

#include <tslbl/records/VexException.h>
#include <tslbl/tune/FieldLimits.h>
#include <random>
#include <stdexcept>

namespace {

using namespace TslBL;

using Pairs = std::vector<std::pair<double, double>>;

std::vector<Q1CalPt> Points(TuneField::Id field, const Pairs& pairs) {
  std::vector<Q1CalPt> points;
  for (const auto& [mz, value] : pairs) points.emplace_back(mz, L"").Fields[field] = value;
  return points;
}

Q1FieldConvert Curve(TuneField::Id field, const Pairs& pairs) { return {Points(field, pairs), field}; }

constexpr TuneField::Id kLevel[] = {TuneField::CapExit, TuneField::Q0RFAmpl, TuneField::Q0Offset,
                                    TuneField::Q1Offset};
constexpr TuneField::Id kSloped[] = {TuneField::Skimmer, TuneField::Q0Exit1, TuneField::Q0Exit2,
                                     TuneField::Q1Resolution, TuneField::Q1IonGuide};

TEST(Q1FieldConvert, IsLevelBeyondTheEndsForFourFields) {
  for (const TuneField::Id field : kLevel) {
    SCOPED_TRACE(field);
    const Q1FieldConvert curve = Curve(field, {{100, 10}, {200, 20}});
    EXPECT_EQ(curve.MZToFieldVal(50), 10.0);
    EXPECT_EQ(curve.MZToFieldVal(150), 15.0);
    EXPECT_EQ(curve.MZToFieldVal(250), 20.0);
  }
}

TEST(Q1FieldConvert, GoesOnAlongTheEndSegmentsForFiveFields) {
  for (const TuneField::Id field : kSloped) {
    SCOPED_TRACE(field);
    const Q1FieldConvert curve = Curve(field, {{100, 10}, {200, 20}});
    EXPECT_EQ(curve.MZToFieldVal(50), 5.0);
    EXPECT_EQ(curve.MZToFieldVal(150), 15.0);
    EXPECT_EQ(curve.MZToFieldVal(250), 25.0);
  }
}

TEST(Q1FieldConvert, IsCutToTheLimitsOfItsField) {
  const Q1FieldConvert curve = Curve(TuneField::Skimmer, {{100, 10}, {200, 20}});
  EXPECT_EQ(curve.MZToFieldVal(5000), 100.0);
  EXPECT_EQ(curve.MZToFieldVal(-5000), -100.0);
  EXPECT_EQ(Curve(TuneField::CapExit, {{100, 401}}).MZToFieldVal(1), 400.0);
  EXPECT_EQ(Curve(TuneField::Q0RFAmpl, {{100, -1}}).MZToFieldVal(1), 0.0);
}

TEST(Q1FieldConvert, OfOnePointGivesItsValue) {
  for (const TuneField::Id field : {TuneField::CapExit, TuneField::Skimmer})
    for (const double mz : {5.0, 100.0, 3000.0}) EXPECT_EQ(Curve(field, {{100, 10}}).MZToFieldVal(mz), 10.0);
}

TEST(Q1FieldConvert, FollowsTheSegmentsOfPointsInAnyOrder) {
  const Q1FieldConvert curve = Curve(TuneField::Q0Exit1, {{300, 0}, {100, 10}, {400, 50}, {200, 20}});
  const Pairs expected = {{100, 10}, {150, 15}, {200, 20}, {250, 10}, {300, 0},
                          {350, 25}, {400, 50}, {90, 9},   {410, 55}};
  for (const auto& [mz, value] : expected) EXPECT_DOUBLE_EQ(curve.MZToFieldVal(mz), value) << mz;
}

TEST(Q1FieldConvert, UsesThePointsThatCarryTheFieldOnly) {
  std::vector<Q1CalPt> points = Points(TuneField::CapExit, {{100, 10}, {300, 30}});
  points.push_back(Points(TuneField::Skimmer, {{200, 99}}).front());
  EXPECT_EQ(Q1FieldConvert(points, TuneField::CapExit).MZToFieldVal(200), 20.0);
  EXPECT_EQ(Q1FieldConvert(points, TuneField::Skimmer).MZToFieldVal(5), 99.0);
  EXPECT_TRUE(Q1FieldConvert(points, TuneField::Q0Offset).Empty());
}

TEST(Q1FieldConvert, WithoutPointsFailsWithAText) {
  const Q1FieldConvert curve = Curve(TuneField::Skimmer, {});
  double value = 7.0;
  std::wstring error;
  EXPECT_TRUE(curve.Empty());
  EXPECT_FALSE(curve.MZToFieldVal(100, value, error));
  EXPECT_EQ(error, L"There are no calibration points defined for this field.");
  EXPECT_EQ(value, 7.0);
  EXPECT_EQ(curve.MZToFieldVal(100), 0.0);
}

TEST(Q1FieldConvert, WithPointsLeavesTheTextAlone) {
  double value = 0.0;
  std::wstring error = L"untouched";
  EXPECT_TRUE(Curve(TuneField::Skimmer, {{100, 10}, {200, 20}}).MZToFieldVal(5000, value, error));
  EXPECT_EQ(error, L"untouched");
  EXPECT_EQ(value, 100.0);
}

TEST(Q1FieldConvert, OfAFieldThatIsNotSteppableThrows) {
  for (std::uint32_t id = 0; id <= 56; ++id) {
    const auto field = static_cast<TuneField::Id>(id);
    if (TuneField::IsFieldSteppable(field)) continue;
    try {
      Q1FieldConvert({}, field);
      ADD_FAILURE() << id;
    } catch (const VexException& e) {
      EXPECT_EQ(e.Message(), L"The field " + TuneField::FieldToString(field) + L" is not steppable.");
    }
  }
}

TEST(Q1FieldConvert, ThrowsBetweenTwoPointsOfOneMz) {
  const Q1FieldConvert curve = Curve(TuneField::CapExit, {{200, 10}, {200, 20}, {300, 30}});
  try {
    curve.MZToFieldVal(200);
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "Divide by zero error");
  }
}

TEST(Q1FieldConvert, BeyondAnEndPairOfOneMzDoesNotThrow) {
  EXPECT_EQ(Curve(TuneField::CapExit, {{200, 10}, {200, 10}}).MZToFieldVal(100), 10.0);
  EXPECT_NO_THROW(Curve(TuneField::Skimmer, {{200, 10}, {200, 20}}).MZToFieldVal(100));
}

TEST(Q1FieldConvert, WCalPtsReplacesTheCurve) {
  Q1FieldConvert curve = Curve(TuneField::CapExit, {{100, 10}, {200, 20}});
  curve.WCalPts(Points(TuneField::Skimmer, {{100, 10}, {200, 20}}), TuneField::Skimmer);
  EXPECT_EQ(curve.MZToFieldVal(250), 25.0);
}

TEST(Q1FieldConvert, ACopyIsIndependent) {
  Q1FieldConvert curve = Curve(TuneField::CapExit, {{100, 10}});
  const Q1FieldConvert copy = curve;
  curve.WCalPts({}, TuneField::CapExit);
  EXPECT_EQ(copy.MZToFieldVal(1), 10.0);
}

TEST(Q1FieldConvert, PassesThroughItsPoints) {
  constexpr unsigned kSeed = 31415;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> mz(5, 3000);
  std::uniform_real_distribution<double> value(-29, 29);
  for (int round = 0; round < 100; ++round) {
    Pairs pairs;
    for (int i = 0; i <= round % 9; ++i) pairs.emplace_back(mz(random), value(random));
    for (const TuneField::Id field : {TuneField::Q0Offset, TuneField::Q0Exit2}) {
      const Q1FieldConvert curve = Curve(field, pairs);
      for (const auto& [at, expected] : pairs) EXPECT_NEAR(curve.MZToFieldVal(at), expected, 1e-6);
    }
  }
}

}  // namespace
