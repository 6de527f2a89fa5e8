#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <calibrate/SampleCalibration.h>
#include <tslbl/calibrate/Calibrate.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <cmath>
#include <limits>
#include <sstream>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

constexpr const wchar_t* kTooFew = L"At least two calibrant peaks must be assigned.";
constexpr const wchar_t* kPasses = L"Calibrants cannot be moved beyond neighboring calibrants.";
constexpr const wchar_t* kNoPeak = L"There are no available peaks at this location.";
constexpr const wchar_t* kTaken = L"There is already an active calibrant at this location.";

CalibrateParams ParamsOf(const std::vector<double>& mz, double tolerance = 1.0) {
  CalibrateParams params;
  for (const double each : mz) params.calibrants.push_back({L"at " + std::to_wstring(each), each});
  params.tolerance = tolerance;
  return params;
}

// Nothing is evaluated: the table of peaks stays as the test wrote it.
bool Auto(Calibrate& calibrate, const CalibrateParams& params) {
  std::vector<CurveEval> none;
  bool failed = false;
  const bool ok = calibrate.AutoCalibrate(params, none, failed);
  EXPECT_FALSE(failed);
  return ok;
}

// The rows of the peaks that the points have, "-" for none.
std::string Rows(const Calibrate& calibrate) {
  std::ostringstream out;
  for (std::uint32_t i = 0; i < calibrate.QNumCalPoints(); ++i) {
    const auto point = calibrate.QCalPoint(i);
    out << (i == 0 ? "" : " ");
    point.Status == Calibrate::Active ? out << point.PeakIdx : out << '-';
  }
  return out.str();
}

std::string RowsFor(const std::vector<TablePeak>& peaks, const CalibrateParams& params) {
  Calibrate calibrate(SpectrumToCalibrate(peaks));
  Auto(calibrate, params);
  return Rows(calibrate);
}

// Peaks at m/z 110.1, 150.0 and 190.3 for calibrants at 110, 150 and 190.
const std::vector<TablePeak> kThree = {{101, 50}, {500, 60}, {903, 70}};

Calibrate Three() {
  Calibrate calibrate(SpectrumToCalibrate(kThree));
  EXPECT_TRUE(Auto(calibrate, ParamsOf({110, 150, 190})));
  return calibrate;
}

// Two peaks of calibrants at its ends, at m/z 110 and 190, where they belong, and these between them.
Calibrate EndsAnd(const std::vector<TablePeak>& between, const std::vector<double>& calibrants) {
  std::vector<TablePeak> peaks = {{100, 50}};
  peaks.insert(peaks.end(), between.begin(), between.end());
  peaks.push_back({900, 50});
  std::vector<double> all = {110, 190};
  all.insert(all.end(), calibrants.begin(), calibrants.end());
  Calibrate calibrate(SpectrumToCalibrate(peaks));
  EXPECT_TRUE(Auto(calibrate, ParamsOf(all)));
  return calibrate;
}

}  // namespace

TEST(Calibrate, BeginsWithoutPointsOnACopyOfTheSpectrum) {
  const Spectrum spectrum = SpectrumToCalibrate(kThree);
  Calibrate calibrate(spectrum);
  EXPECT_EQ(calibrate.QNumCalPoints(), 0u);
  EXPECT_FALSE(calibrate.IsModified());
  EXPECT_EQ(calibrate.QCalSpectrum(), spectrum);
  EXPECT_EQ(calibrate.QLastError(), L"");
  EXPECT_EQ(calibrate.CalPointMoving(150.0), 0.0);
  EXPECT_THROW(calibrate.QCalPoint(0), std::out_of_range);
}

TEST(AutoCalibrate, LaysTheAxisThroughTheCalibrants) {
  const Calibrate calibrate = Three();
  EXPECT_TRUE(calibrate.IsModified());
  const Spectrum& s = calibrate.QCalSpectrum();
  EXPECT_NEAR(s.xAxis[101], 110.0, 1e-9);
  EXPECT_NEAR(s.xAxis[500], 150.0, 1e-9);
  EXPECT_NEAR(s.xAxis[903], 190.0, 1e-9);
  ASSERT_EQ(s.appliedMZCalPts.size(), 3u);
  EXPECT_EQ(s.appliedMZCalPts[2].Name, ParamsOf({190}).calibrants[0].Name);
  EXPECT_EQ(s.appliedMZCalPts[2].MZ, 190.0);
  EXPECT_NEAR(s.appliedMZCalPts[2].MassDAC, 19030.0, 1e-9);
  EXPECT_EQ(s.tuneMZCalPts, SpectrumToCalibrate({}).tuneMZCalPts);
}

TEST(AutoCalibrate, LeavesItsSpectrumAlone) {
  const Spectrum spectrum = SpectrumToCalibrate(kThree);
  Calibrate calibrate(spectrum);
  EXPECT_TRUE(Auto(calibrate, ParamsOf({110, 150, 190})));
  EXPECT_EQ(spectrum, SpectrumToCalibrate(kThree));
}

TEST(AutoCalibrate, TellsOfEachPointWhatApplyMadeOfIt) {
  const auto point = Three().QCalPoint(2);
  EXPECT_EQ(point.MZ, 190.0);
  EXPECT_EQ(point.PeakMZ, 190.0);
  EXPECT_NEAR(point.MassDAC, 19030.0, 1e-9);
  EXPECT_EQ(point.PeakIdx, 2);
  EXPECT_NEAR(point.DeltaMZ, 0.0, 1e-9);
  EXPECT_EQ(point.Status, Calibrate::Active);
}

TEST(AutoCalibrate, ACalibrantWithoutAPeakTakesNoPart) {
  Calibrate calibrate(SpectrumToCalibrate(kThree));
  EXPECT_TRUE(Auto(calibrate, ParamsOf({110, 130, 190})));
  EXPECT_EQ(Rows(calibrate), "0 - 2");
  EXPECT_EQ(calibrate.QCalSpectrum().appliedMZCalPts.size(), 2u);
  const auto point = calibrate.QCalPoint(1);
  EXPECT_EQ(point.Status, Calibrate::NoPeak);
  EXPECT_EQ(point.PeakIdx, -1);
  EXPECT_EQ(point.PeakMZ, 130.0);
  EXPECT_EQ(point.DeltaMZ, 0.0);
  EXPECT_NEAR(point.MassDAC, 11010.0 + (19030.0 - 11010.0) / 80.0 * 20.0, 1e-9) << "on the new axis";
}

TEST(AutoCalibrate, PointsAscendByMz) {
  Calibrate calibrate(SpectrumToCalibrate(kThree));
  EXPECT_TRUE(Auto(calibrate, ParamsOf({190, 110, 150})));
  EXPECT_EQ(Rows(calibrate), "0 1 2");
  EXPECT_EQ(calibrate.QCalPoint(0).MZ, 110.0);
  EXPECT_EQ(calibrate.QCalPoint(2).MZ, 190.0);
}

TEST(AutoCalibrate, TheWindowHasBothItsEnds) {
  // Exactly a quarter, and a tenth more, from the calibrants.
  const std::vector<TablePeak> peaks = {{102.5, 50}, {197.5, 50}, {803.5, 50}};
  EXPECT_EQ(RowsFor(peaks, ParamsOf({110, 120, 180}, 0.25)), "0 1 -");
}

TEST(AutoCalibrate, TakesTheTallestPeakOfTheWindow) {
  EXPECT_EQ(RowsFor({{95, 50}, {100, 40}, {105, 60}, {900, 1}}, ParamsOf({110, 190})), "2 3");
}

TEST(AutoCalibrate, OfEquallyTallPeaksTheNearestAndThenTheLeftOne) {
  EXPECT_EQ(RowsFor({{96, 50}, {101, 50}, {900, 1}}, ParamsOf({110, 190})), "1 2");
  EXPECT_EQ(RowsFor({{96, 50}, {104, 50}, {900, 1}}, ParamsOf({110, 190})), "0 2");
  EXPECT_EQ(RowsFor({{96, 50}, {101, 50 - 9e-7}, {900, 1}}, ParamsOf({110, 190})), "1 2")
      << "equal within 1e-6";
  EXPECT_EQ(RowsFor({{96, 50}, {101, 50 - 2e-6}, {900, 1}}, ParamsOf({110, 190})), "0 2");
}

TEST(AutoCalibrate, APeakIsTakenByTheFirstCalibrantInItsListAndByNoOther) {
  // The next best peak is not given to the second one.
  const std::vector<TablePeak> peaks = {{100, 50}, {104, 40}, {900, 1}};
  EXPECT_EQ(RowsFor(peaks, ParamsOf({110.0, 110.4, 190})), "0 - 2");
  EXPECT_EQ(RowsFor(peaks, ParamsOf({110.4, 110.0, 190})), "- 0 2");
}

TEST(AutoCalibrate, WithFewerThanTwoPeaksAssignedIsRefused) {
  Calibrate calibrate(SpectrumToCalibrate(kThree));
  EXPECT_FALSE(Auto(calibrate, ParamsOf({110, 130})));
  EXPECT_EQ(calibrate.QLastError(), kTooFew);
  EXPECT_EQ(calibrate.QLastError(), L"");
  EXPECT_FALSE(calibrate.IsModified());
  EXPECT_EQ(calibrate.QCalSpectrum(), SpectrumToCalibrate(kThree));
  const auto point = calibrate.QCalPoint(0);
  EXPECT_EQ(point.Status, Calibrate::Active);
  EXPECT_NEAR(point.PeakMZ, 110.1, 1e-9) << "as it was found";
  EXPECT_NEAR(point.DeltaMZ, 0.1, 1e-9);
  EXPECT_NEAR(point.MassDAC, 11010.0, 1e-9);
}

TEST(AutoCalibrate, WithoutPeaksFails) {
  Calibrate calibrate(SpectrumToCalibrate({}));
  std::vector<CurveEval> none;
  bool failed = false;
  EXPECT_FALSE(calibrate.AutoCalibrate(ParamsOf({110, 190}), none, failed));
  EXPECT_TRUE(failed);
  EXPECT_EQ(calibrate.QLastError(), L"Peak detect found no peaks.");
}

TEST(AutoCalibrate, WithAnEvaluationThatFailsFails) {
  Spectrum frozen = SpectrumToCalibrate(kThree);
  frozen.AddStatus(Curve::STATUS_OPD);
  Calibrate calibrate(frozen);
  std::vector<CurveEval> evals = {CurveEval(BaselineParams::DefaultMS())};
  bool failed = false;
  EXPECT_FALSE(calibrate.AutoCalibrate(ParamsOf({110, 190}), evals, failed));
  EXPECT_TRUE(failed);
  EXPECT_NE(calibrate.QLastError(), L"");
}

TEST(AutoCalibrate, BeginsAnewOnTheAxisThatTheSpectrumCameWith) {
  Calibrate calibrate = Three();
  const Spectrum once = calibrate.QCalSpectrum();
  EXPECT_TRUE(Auto(calibrate, ParamsOf({110, 150, 190})));
  EXPECT_EQ(calibrate.QCalSpectrum(), once);
  EXPECT_FALSE(Auto(calibrate, ParamsOf({110})));
  EXPECT_EQ(calibrate.QCalSpectrum(), SpectrumToCalibrate(kThree));
  EXPECT_FALSE(calibrate.IsModified());
}

TEST(AutoCalibrate, ThatFindsNoPeaksAnyMoreLeavesNothingToApply) {
  Spectrum s = SpectrumToCalibrate(kThree);
  s.yAxis[0] = 2.0;
  Calibrate calibrate(s);
  ASSERT_TRUE(Auto(calibrate, ParamsOf({110, 150, 190})));
  PeakDetectParams nothing = PeakDetectParams::DefaultMS();
  nothing.SNInUse = true;
  nothing.SN = 4000000000u;
  std::vector<CurveEval> evals = {CurveEval(BaselineParams::DefaultMS()), CurveEval(NoiseParams::DefaultMS()),
                                  CurveEval(nothing)};
  bool failed = false;
  EXPECT_FALSE(calibrate.AutoCalibrate(ParamsOf({110, 150, 190}), evals, failed));
  EXPECT_TRUE(failed);
  EXPECT_EQ(calibrate.QCalSpectrum().appliedMZCalPts, s.appliedMZCalPts) << "begun anew all the same";
  EXPECT_FALSE(calibrate.IsModified());
  calibrate.QLastError();
  EXPECT_FALSE(calibrate.Apply());
  EXPECT_EQ(calibrate.QLastError(), L"Peak detect found no peaks.");
}

TEST(AutoCalibrate, LeavesTheMarkOfFailureWhereApplyFails) {
  Calibrate calibrate(SpectrumToCalibrate(kThree));
  std::vector<CurveEval> none;
  bool failed = true;
  EXPECT_FALSE(calibrate.AutoCalibrate(ParamsOf({110}), none, failed));
  EXPECT_TRUE(failed);
  EXPECT_TRUE(calibrate.AutoCalibrate(ParamsOf({110, 190}), none, failed));
  EXPECT_TRUE(failed);
}

TEST(AutoCalibrate, TheFirstPeakBeyondTheWindowEndsTheSearch) {
  EXPECT_EQ(RowsFor({{95, 50}, {130, 10}, {101, 60}, {900, 1}}, ParamsOf({110, 190})), "0 3");
}

TEST(AutoCalibrate, OfEquallyTallAndNearPeaksTheLeftOneWhereverItStands) {
  EXPECT_EQ(RowsFor({{104, 50}, {96, 50}, {900, 1}}, ParamsOf({110, 190})), "1 2");
}

TEST(AutoCalibrate, ACalibrantThatIsNoNumberHasNoPeakAndComesLast) {
  Calibrate calibrate(SpectrumToCalibrate(kThree));
  EXPECT_TRUE(Auto(calibrate, ParamsOf({std::nan(""), 190, 110})));
  EXPECT_EQ(Rows(calibrate), "0 2 -");
}

TEST(AutoCalibrate, EvaluatesTheSpectrumFirst) {
  Spectrum s = SpectrumToCalibrate({});
  for (std::size_t i = 0; i < s.yAxis.size(); ++i) {
    s.yAxis[i] = 10.0 + static_cast<double>(i * 7919 % 5);
    for (const double centre : {110.13, 150.07, 190.11})
      s.yAxis[i] += 900.0 * std::exp(-0.5 * std::pow((s.xAxis[i] - centre) / 0.3, 2.0));
  }
  std::vector<CurveEval> evals = {CurveEval(BaselineParams::DefaultMS()), CurveEval(NoiseParams::DefaultMS()),
                                  CurveEval(PeakDetectParams::DefaultMS())};
  Calibrate calibrate(s);
  bool failed = false;
  ASSERT_TRUE(calibrate.AutoCalibrate(ParamsOf({110, 150, 190}), evals, failed));
  EXPECT_EQ(Rows(calibrate), "0 1 2");
  EXPECT_NEAR(calibrate.QCalSpectrum().appliedMZCalPts[0].MassDAC, 11013.0, 2.0);
  EXPECT_NEAR(calibrate.QCalSpectrum().appliedMZCalPts[1].MassDAC, 15007.0, 2.0);
}

TEST(Apply, OfTwoCalibrantsAtOneMzThrowsAndLeavesAxisAndPointsAlone) {
  Calibrate calibrate = EndsAnd({{500, 60}, {508, 10}}, {150, 150});
  EXPECT_EQ(Rows(calibrate), "0 1 - 3");
  ASSERT_TRUE(calibrate.CalPointMoved(2, 150.8));
  const Spectrum before = calibrate.QCalSpectrum();
  EXPECT_THROW(calibrate.Apply(), std::runtime_error);
  EXPECT_EQ(calibrate.QCalSpectrum(), before);
  EXPECT_NEAR(calibrate.QCalPoint(2).PeakMZ, 150.8, 1e-9);
}

TEST(Apply, PairsTheKnownMzWithTheDacValueThatWasSeen) {
  Calibrate calibrate = Three();
  EXPECT_TRUE(calibrate.CalPointToggle(1));
  EXPECT_TRUE(calibrate.Apply());
  const auto& table = calibrate.QCalSpectrum().appliedMZCalPts;
  ASSERT_EQ(table.size(), 2u);
  EXPECT_NEAR(table[0].MassDAC, 11010.0, 1e-9);
  EXPECT_NEAR(table[1].MassDAC, 19030.0, 1e-9);
  const auto off = calibrate.QCalPoint(1);
  EXPECT_EQ(off.Status, Calibrate::Off);
  EXPECT_EQ(off.PeakMZ, 150.0);
  EXPECT_NEAR(off.MassDAC, 15020.0, 1e-9);
}

TEST(Apply, WithOneActivePointLeavesAxisAndPointsAlone) {
  Calibrate calibrate = Three();
  calibrate.CalPointToggle(0);
  calibrate.CalPointToggle(1);
  const Spectrum before = calibrate.QCalSpectrum();
  const double dac = calibrate.QCalPoint(0).MassDAC;
  EXPECT_FALSE(calibrate.Apply());
  EXPECT_EQ(calibrate.QLastError(), kTooFew);
  EXPECT_EQ(calibrate.QCalSpectrum(), before);
  EXPECT_EQ(calibrate.QCalPoint(0).MassDAC, dac);
}

TEST(CalPointToggle, SwitchesOffAndBackToNoPeak) {
  Calibrate calibrate(SpectrumToCalibrate(kThree));
  EXPECT_TRUE(Auto(calibrate, ParamsOf({110, 130, 190})));
  const auto status = [&](std::uint32_t idx) { return calibrate.QCalPoint(idx).Status; };
  EXPECT_TRUE(calibrate.CalPointToggle(0));
  EXPECT_EQ(status(0), Calibrate::Off);
  EXPECT_FALSE(calibrate.CalPointToggle(0));
  EXPECT_EQ(status(0), Calibrate::NoPeak);
  EXPECT_FALSE(calibrate.CalPointToggle(1));
  EXPECT_EQ(status(1), Calibrate::Off);
  EXPECT_THROW(calibrate.CalPointToggle(3), std::out_of_range);
}

TEST(CalPointToggle, AppliesNothing) {
  Calibrate calibrate = Three();
  const Spectrum before = calibrate.QCalSpectrum();
  calibrate.CalPointToggle(1);
  EXPECT_EQ(calibrate.QCalSpectrum(), before);
}

TEST(CalPointMoving, IsTheDacValueOfThePlace) {
  EXPECT_NEAR(Three().CalPointMoving(110.0), 11010.0, 1e-9);
  EXPECT_NEAR(Three().CalPointMoving(170.0), 15000.0 + (19030.0 - 15000.0) / 2.0, 1e-9);
}

TEST(CalPointMoved, TakesThePeakThatSpansThePlace) {
  Calibrate calibrate = EndsAnd({{500, 60}, {506, 10}}, {150});
  EXPECT_TRUE(calibrate.CalPointMoved(1, 150.45));
  const auto point = calibrate.QCalPoint(1);
  EXPECT_EQ(point.PeakIdx, 2);
  EXPECT_NEAR(point.PeakMZ, 150.6, 1e-9);
  EXPECT_NEAR(point.MassDAC, 15060.0, 1e-9);
  EXPECT_NEAR(point.DeltaMZ, 0.15, 1e-9) << "from the place, not from what is known";
  EXPECT_EQ(point.Status, Calibrate::Active);
  EXPECT_TRUE(calibrate.Apply());
  EXPECT_NEAR(calibrate.QCalPoint(1).DeltaMZ, 0.0, 1e-9);
  EXPECT_NEAR(calibrate.QCalSpectrum().xAxis[506], 150.0, 1e-9);
}

TEST(CalPointMoved, InAGapTakesTheNearestPeakWithinTheTolerance) {
  Calibrate calibrate = EndsAnd({{500, 60}, {530, 10}, {560, 90}}, {150});
  EXPECT_TRUE(calibrate.CalPointMoved(1, 153.6));
  EXPECT_EQ(Rows(calibrate), "0 2 4");
  EXPECT_FALSE(calibrate.CalPointMoved(1, 158.0));
  EXPECT_EQ(calibrate.QLastError(), kNoPeak);
}

TEST(CalPointMoved, OfEquallyNearPeaksTakesTheTallerOne) {
  Calibrate left = EndsAnd({{500, 60}, {530, 90}, {540, 10}}, {150});
  EXPECT_TRUE(left.CalPointMoved(1, 153.5));
  EXPECT_EQ(Rows(left), "0 2 4");
  Calibrate right = EndsAnd({{500, 60}, {530, 10}, {540, 90}}, {150});
  EXPECT_TRUE(right.CalPointMoved(1, 153.5));
  EXPECT_EQ(Rows(right), "0 3 4");
}

TEST(CalPointMoved, FromAGapPassesOverThePeakOfAnActivePoint) {
  // The nearest peak is the left neighbour's, moved towards the gap beforehand.
  Calibrate calibrate = EndsAnd({{500, 60}, {508, 10}}, {149, 152});
  EXPECT_EQ(Rows(calibrate), "0 1 - 3");
  EXPECT_TRUE(calibrate.CalPointMoved(2, 150.35));
  EXPECT_EQ(Rows(calibrate), "0 1 2 3");
}

TEST(CalPointMoved, OfEquallyNearAndTallPeaksTakesTheLeftOneWherever) {
  // Without a test of whether an active point has it, as its own neighbour here.
  Calibrate calibrate = EndsAnd({{540, 10}, {530, 10}}, {153});
  EXPECT_EQ(Rows(calibrate), "0 2 3");
  calibrate.CalPointToggle(1);
  EXPECT_TRUE(calibrate.CalPointMoved(1, 153.5));
  EXPECT_EQ(Rows(calibrate), "0 2 3");
}

TEST(CalPointMoved, AtTheEndsOfTheAxisTakesAPeakThere) {
  Calibrate calibrate = EndsAnd({}, {150});
  Calibrate ends(SpectrumToCalibrate({{2, 50}, {998, 50}}));
  ASSERT_TRUE(Auto(ends, ParamsOf({100.2, 199.8})));
  EXPECT_TRUE(ends.CalPointMoved(0, ends.QCalSpectrum().xAxis.front()));
  EXPECT_TRUE(ends.CalPointMoved(1, ends.QCalSpectrum().xAxis.back()));
  EXPECT_FALSE(ends.CalPointMoved(0, 99.95));
  EXPECT_EQ(ends.QLastError(), kNoPeak);
  EXPECT_FALSE(ends.CalPointMoved(1, 200.05));
  EXPECT_EQ(ends.QLastError(), kNoPeak);
}

TEST(CalPointMoved, BetweenTwoPointsTakesThePeakOfTheLowerOne) {
  // The span of the peak ends at point 502, m/z 150.2.
  Calibrate calibrate = EndsAnd({{500, 60}, {505, 90}}, {150});
  EXPECT_EQ(Rows(calibrate), "0 2 3");
  EXPECT_TRUE(calibrate.CalPointMoved(1, calibrate.QCalSpectrum().xAxis[502] + 0.05));
  EXPECT_EQ(Rows(calibrate), "0 1 3");
}

TEST(CalPointMoved, OntoItsOwnPeakChangesNothing) {
  Calibrate calibrate = Three();
  const double delta = calibrate.QCalPoint(1).DeltaMZ;
  EXPECT_TRUE(calibrate.CalPointMoved(1, 150.15));
  EXPECT_EQ(calibrate.QCalPoint(1).DeltaMZ, delta);
  EXPECT_EQ(calibrate.QCalPoint(1).PeakMZ, 150.0);
}

TEST(CalPointMoved, BringsBackAPointThatWasSwitchedOff) {
  Calibrate calibrate = Three();
  calibrate.CalPointToggle(1);
  EXPECT_TRUE(calibrate.CalPointMoved(1, 150.0));
  EXPECT_EQ(Rows(calibrate), "0 1 2");
}

TEST(CalPointMoved, DoesNotPassItsNeighbours) {
  Calibrate calibrate = Three();
  for (const double mz : {110.0, 109.0, 190.0, 195.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_FALSE(calibrate.CalPointMoved(1, mz)) << mz;
    EXPECT_EQ(calibrate.QLastError(), kPasses);
  }
  EXPECT_FALSE(calibrate.CalPointMoved(0, 150.0));
  EXPECT_EQ(calibrate.QLastError(), kPasses);
}

TEST(CalPointMoved, DoesNotPassTheCurrentPeakOfANeighbour) {
  Calibrate calibrate = EndsAnd({{500, 60}, {508, 10}}, {150});
  ASSERT_TRUE(calibrate.CalPointMoved(1, 150.8));
  EXPECT_FALSE(calibrate.CalPointMoved(2, 150.4)) << "beyond the m/z of the neighbour, not beyond its peak";
  EXPECT_EQ(calibrate.QLastError(), kPasses);
}

TEST(CalPointMoved, OutsideTheAxisHasNoPeak) {
  Calibrate calibrate = Three();
  for (const auto& [idx, mz] : {std::pair{0u, 99.0}, {2u, 201.0}}) {
    EXPECT_FALSE(calibrate.CalPointMoved(idx, mz));
    EXPECT_EQ(calibrate.QLastError(), kNoPeak);
  }
}

TEST(CalPointMoved, OntoThePeakOfAnActivePointIsRefused) {
  // Both points lie on the span of the one peak.
  Calibrate calibrate = EndsAnd({{500, 60}}, {150, 150.1});
  EXPECT_EQ(Rows(calibrate), "0 1 - 2");
  EXPECT_FALSE(calibrate.CalPointMoved(2, 150.15));
  EXPECT_EQ(calibrate.QLastError(), kTaken);
  EXPECT_EQ(Rows(calibrate), "0 1 - 2");
}

TEST(CalPointMoved, OfAPointThatIsNotThereThrows) {
  Calibrate calibrate = Three();
  EXPECT_THROW(calibrate.CalPointMoved(3, 150.0), std::out_of_range);
}
