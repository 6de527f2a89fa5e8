#include <tslbl/tune/LensCurve.h>

#include <gtest/gtest.h>

#include <tslbl/records/VexException.h>
#include <stdexcept>

#include "tune/Samples.h"

namespace {

using namespace TslBL;
using namespace tests;

Tune WithPoints(std::initializer_list<std::pair<double, double>> points) {
  Tune tune;
  tune.ControlData.Skimmer.Type = IOPoint::CalibratedType;
  tune.ControlData.Skimmer.Single = 7.0;
  for (const auto& [mz, value] : points)
    tune.Q1CalPts.emplace_back(mz, L"").Fields[TuneField::Skimmer] = value;
  return tune;
}

TEST(LensCurve, OfASingleValueIsLevel) {
  Tune tune = WithPoints({{100, 10}, {200, 20}});
  tune.ControlData.Skimmer.Type = IOPoint::SingleType;
  const LensCurve lens(tune, TuneField::Skimmer);
  EXPECT_EQ(lens.QCurve(), nullptr);
  EXPECT_EQ(lens.At(150), 7.0);
}

TEST(LensCurve, FollowsThePoints) {
  const LensCurve lens(WithPoints({{200, 20}, {100, 10}}), TuneField::Skimmer);
  ASSERT_NE(lens.QCurve(), nullptr);
  EXPECT_EQ(lens.At(150), 15.0);
  EXPECT_EQ(lens.QCurve()->QPoints(), (std::vector<std::pair<double, double>>{{100, 10}, {200, 20}}));
}

TEST(LensCurve, WithoutPointsIsEmpty) {
  const LensCurve lens(WithPoints({}), TuneField::Skimmer);
  EXPECT_TRUE(lens.QCurve()->Empty());
  EXPECT_EQ(lens.At(150), 0.0);
}

TEST(LensCurve, IsOpenBetweenTwoPointsOfOneMz) {
  const LensCurve lens(WithPoints({{100, 10}, {200, 20}, {200, 30}, {300, 40}}), TuneField::Skimmer);
  EXPECT_EQ(lens.QCurve()->QOpenMZ(), 200.0);
  EXPECT_EQ(lens.At(150), 15.0);
  const LensCurve open(WithPoints({{100, 10}, {100, 20}}), TuneField::Skimmer);
  EXPECT_THROW(open.At(100), std::runtime_error);
}

TEST(LensCurve, OfOtherPointsIsNotOpen) {
  EXPECT_EQ(LensCurve(WithPoints({{100, 10}, {200, 20}}), TuneField::Skimmer).QCurve()->QOpenMZ(),
            std::nullopt);
  EXPECT_EQ(LensCurve(WithPoints({}), TuneField::Skimmer).QCurve()->QOpenMZ(), std::nullopt);
}

TEST(LensCurve, OfALensThatCannotFollowMzIsItsSingleValueAlone) {
  Tune tune;
  tune.ControlData.Q1Enter = SingleLens(10);
  EXPECT_EQ(LensCurve(tune, TuneField::Q1Enter).At(5), 10.0);
  tune.ControlData.Q1Enter.Type = IOPoint::CalibratedType;
  EXPECT_THROW(LensCurve(tune, TuneField::Q1Enter), VexException);
}

TEST(LensCurve, OfWhatIsNoLensThrows) {
  EXPECT_THROW(LensCurve(Tune(), TuneField::HEDynode), VexException);
  EXPECT_THROW(LensCurve(Tune(), TuneField::kFieldCount), VexException);
}

}  // namespace
