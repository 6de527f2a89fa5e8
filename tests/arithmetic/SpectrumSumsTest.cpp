// Tests: SpectrumSums.cpp, Composite.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <arithmetic/SampleSpectra.h>
#include <tslbl/arithmetic/SpectrumSums.h>
#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <stdexcept>

using namespace TslBL;
using namespace tests;
using testing::ElementsAre;

namespace {

std::string FailureOfAdding(Spectrum a, const Spectrum& b) {
  const Spectrum before = a;
  try {
    AddSingleStateSpectra(&a, &b);
  } catch (const std::runtime_error& e) {
    EXPECT_EQ(a, before);
    return e.what();
  }
  return "";
}

std::string FailureOfDividing(Spectrum s, std::uint32_t divisor) {
  const Spectrum before = s;
  try {
    DivideSpectrum(&s, divisor);
  } catch (const std::runtime_error& e) {
    EXPECT_EQ(s, before);
    return e.what();
  }
  return "";
}

// Of sums of so many spectra.
std::unique_ptr<Spectrum> AverageOf(std::vector<std::pair<std::uint32_t, Spectrum>> sums) {
  std::vector<StateSpectrum> list;
  for (auto& [count, sum] : sums) list.push_back({count, &sum});
  return std::unique_ptr<Spectrum>(AverageMultiStateSpectra(list));
}

std::string FailureOfAveraging(const Spectrum& a, const Spectrum& b) {
  try {
    AverageOf({{1, a}, {1, b}});
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

TEST(AverageMultiStateSpectra, DoesNotDependOnTheOrderBeyondRounding) {
  std::mt19937 random(5);
  std::uniform_int_distribution<int> count(0, 100000);
  std::vector<Spectrum> spectra;
  for (const auto& [from, step] : {std::pair(100.0, 1.0), {100.3, 2.0}, {99.7, 3.0}, {105.0, 1.5}}) {
    std::vector<double> y(100);
    for (double& value : y) value = count(random);
    spectra.push_back(StateSpectrumOf(from, step, y));
  }
  std::vector<StateSpectrum> sources;
  for (std::uint32_t k = 0; k < spectra.size(); ++k) sources.push_back({k + 1, &spectra[k]});
  const std::unique_ptr<const Spectrum> first(AverageMultiStateSpectra(sources));
  for (int run = 0; run < 20; ++run) {
    std::ranges::shuffle(sources, random);
    const std::unique_ptr<const Spectrum> other(AverageMultiStateSpectra(sources));
    ASSERT_EQ(other->xAxis, first->xAxis);
    for (std::size_t i = 0; i < first->yAxis.size(); ++i)
      EXPECT_NEAR(other->yAxis[i], first->yAxis[i], 1e-12 * first->yAxis[i] + 1e-300) << i;
  }
}

}  // namespace

TEST(AddSingleStateSpectra, AddsAmplitudesAndNothingElse) {
  Spectrum sum = StateSpectrumOf(100, 1, {1, 2, 3});
  sum.tic = 6;
  sum.sourceListA = {1};
  Spectrum other = StateSpectrumOf(100, 1, {10, 20, 30});
  other.tic = 60;
  other.sourceListA = {2};
  Spectrum expected = sum;
  expected.yAxis = {11, 22, 33};
  AddSingleStateSpectra(&sum, &other);
  EXPECT_EQ(sum, expected);
}

TEST(AddSingleStateSpectra, RefusesWhatIsOfAnotherState) {
  const Spectrum s = StateSpectrumOf(100, 1, {1, 2, 3});
  Spectrum noAmplitudes = s;
  noAmplitudes.status = Curve::STATUS_X;
  EXPECT_EQ(FailureOfAdding(s, StateSpectrumOf(101, 2, {1, 2})), "Different startMDAC");
  EXPECT_EQ(FailureOfAdding(s, StateSpectrumOf(100, 2, {1, 2})), "Different stepMDAC");
  EXPECT_EQ(FailureOfAdding(s, StateSpectrumOf(100, 1, {1, 2})), "Different numPoints");
  EXPECT_EQ(FailureOfAdding(s, noAmplitudes), "Y axis not assigned");
  EXPECT_EQ(FailureOfAdding(noAmplitudes, s), "Y axis not assigned");
  EXPECT_EQ(FailureOfAdding(s, s), "");
}

TEST(AddSingleStateSpectra, OfCountsDoesNotDependOnTheOrder) {
  std::mt19937_64 random(1);
  std::vector<Spectrum> spectra;
  for (int k = 0; k < 20; ++k) {
    std::vector<double> y(50);
    for (double& value : y) value = static_cast<double>(random() % 100000);
    spectra.push_back(StateSpectrumOf(100, 1, y));
  }
  Spectrum forward = spectra.front();
  for (std::size_t k = 1; k < spectra.size(); ++k) AddSingleStateSpectra(&forward, &spectra[k]);
  Spectrum backward = spectra.back();
  for (std::size_t k = spectra.size() - 1; k-- > 0;) AddSingleStateSpectra(&backward, &spectra[k]);
  EXPECT_EQ(forward.yAxis, backward.yAxis);
}

TEST(DivideSpectrum, DividesAmplitudesAndNothingElse) {
  Spectrum s = StateSpectrumOf(100, 1, {1, 2, 3});
  s.tic = 6;
  Spectrum expected = s;
  expected.yAxis = {0.25, 0.5, 0.75};
  DivideSpectrum(&s, 4);
  EXPECT_EQ(s, expected);
  DivideSpectrum(&s, 4294967295u);
  EXPECT_EQ(s.yAxis[0], 0.25 / 4294967295.0);
}

TEST(DivideSpectrum, ByOneIsNothingAndNeedsNoAmplitudes) {
  Spectrum s;
  EXPECT_EQ(FailureOfDividing(s, 1), "");
  EXPECT_EQ(FailureOfDividing(s, 0), "Y axis not assigned");
  EXPECT_EQ(FailureOfDividing(s, 2), "Y axis not assigned");
  EXPECT_EQ(FailureOfDividing(StateSpectrumOf(100, 1, {1}), 0), "Divide by zero");
}

TEST(AverageMultiStateSpectra, OfNothingIsNull) { EXPECT_EQ(AverageMultiStateSpectra({}), nullptr); }

TEST(AverageMultiStateSpectra, OfOneSumIsItsCopyDivided) {
  Spectrum sum = StateSpectrumOf(100, 1, {3, 6, 9});
  sum.name = L"sum";
  sum.sourceListA = {1, 2, 3};
  Spectrum expected = sum;
  expected.yAxis = {1, 2, 3};
  EXPECT_EQ(*AverageOf({{3, sum}}), expected);
  EXPECT_THROW(AverageOf({{0, sum}}), std::runtime_error);
}

TEST(AverageMultiStateSpectra, OfOneSumKeepsItsClass) {
  class Derived : public Spectrum {
   public:
    Curve* Clone() const override { return new Derived(*this); }
  } sum;
  const std::unique_ptr<Spectrum> average(AverageMultiStateSpectra({{1, &sum}}));
  EXPECT_NE(dynamic_cast<Derived*>(average.get()), nullptr);
}

TEST(AverageMultiStateSpectra, DividesByTheSpectraOfTheSumsThatReachAPoint) {
  const auto average = AverageOf(
      {{3, StateSpectrumOf(100, 1, {30, 30, 30, 30})}, {2, StateSpectrumOf(100.2, 1, {10, 10, 10, 10})}});
  EXPECT_THAT(average->yAxis, ElementsAre(10, 10, 8, 8, 5, 5));
  EXPECT_THAT(average->xAxis, ElementsAre(100.0, testing::DoubleEq(100.1), testing::DoubleEq(100.2),
                                          testing::DoubleEq(100.3), testing::DoubleEq(100.4), 100.5));
}

TEST(AverageMultiStateSpectra, ReadsSumsOnStraightLinesBetweenPoints) {
  const auto average =
      AverageOf({{1, StateSpectrumOf(100, 1, {0, 0, 0, 0, 0})}, {1, StateSpectrumOf(100, 2, {0, 8, 4})}});
  EXPECT_EQ(average->stepMDAC, 1.0);
  ASSERT_EQ(average->yAxis.size(), 5u);
  const double expected[] = {0, 2, 4, 3, 2};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(average->yAxis[i], expected[i], 1e-9);
}

TEST(AverageMultiStateSpectra, BetweenSumsThatDoNotMeetIsZero) {
  const auto average =
      AverageOf({{1, StateSpectrumOf(100, 1, {5, 5})}, {1, StateSpectrumOf(100.5, 1, {7, 7})}});
  EXPECT_THAT(average->yAxis, ElementsAre(5, 5, 0, 0, 0, 7, 7));
}

TEST(AverageMultiStateSpectra, HasTheFinestStepsAndOfEqualOnesTheWidestCalibration) {
  Spectrum coarse = StateSpectrumOf(100, 2, {1, 1, 1}, TenthsFrom(0, 3000));
  Spectrum fine = StateSpectrumOf(100, 1, {1, 1, 1}, TenthsFrom(50, 60));
  Spectrum wide = StateSpectrumOf(100, 1, {1, 1, 1}, TenthsFrom(50, 70));
  Spectrum same = StateSpectrumOf(100, 1, {1, 1, 1}, TenthsFrom(40, 60));
  std::uint32_t id = 0;
  for (Spectrum* s : {&coarse, &fine, &wide, &same}) {
    s->tuneId = ++id;
    s->timeStamp = 1000.0 * id;
  }
  const auto winner = [](const Spectrum& a, const Spectrum& b) {
    return AverageOf({{1, a}, {1, b}})->tuneId;
  };
  EXPECT_EQ(winner(coarse, fine), fine.tuneId);
  EXPECT_EQ(winner(fine, coarse), fine.tuneId);
  EXPECT_EQ(winner(fine, wide), wide.tuneId);
  EXPECT_EQ(winner(wide, fine), wide.tuneId);
  EXPECT_EQ(winner(wide, same), wide.tuneId) << "the first of equals";
  EXPECT_EQ(winner(same, wide), same.tuneId);
  const auto average = AverageOf({{1, coarse}, {1, wide}});
  EXPECT_EQ(average->timeStamp, wide.timeStamp);
  EXPECT_EQ(average->appliedMZCalPts, wide.appliedMZCalPts);
  EXPECT_EQ(average->tuneMZCalPts, wide.appliedMZCalPts);
  EXPECT_EQ(average->stepMDAC, 1.0);
  EXPECT_EQ(average->status, Curve::STATUS_X | Curve::STATUS_Y);
}

TEST(AverageMultiStateSpectra, StepsThatDifferByLessThanAMillionthAreEqual) {
  Spectrum narrow = StateSpectrumOf(100, 1.0, {1, 1}, TenthsFrom(50, 60));
  Spectrum wide = StateSpectrumOf(100, 1.0 + 9e-7, {1, 1}, TenthsFrom(50, 70));
  wide.tuneId = 9;
  EXPECT_EQ(AverageOf({{1, narrow}, {1, wide}})->tuneId, 9u);
  wide.stepMDAC = 1.0 + 2e-6;
  EXPECT_EQ(AverageOf({{1, narrow}, {1, wide}})->tuneId, 0u);
}

TEST(AverageMultiStateSpectra, LeavesItsSourcesAlone) {
  Spectrum a = StateSpectrumOf(100, 1, {1, 2});
  Spectrum b = StateSpectrumOf(101, 1, {3, 4});
  const Spectrum beforeA = a, beforeB = b;
  const std::unique_ptr<Spectrum> average(AverageMultiStateSpectra({{1, &a}, {1, &b}}));
  EXPECT_EQ(a, beforeA);
  EXPECT_EQ(b, beforeB);
}

TEST(AverageMultiStateSpectra, OfEqualGridsIsTheMeanAtEachPoint) {
  std::mt19937_64 random(7);
  std::vector<std::pair<std::uint32_t, Spectrum>> sums;
  std::vector<double> mean(1000);
  for (int k = 0; k < 10; ++k) {
    std::vector<double> y(mean.size());
    for (std::size_t i = 0; i < y.size(); ++i) mean[i] += y[i] = static_cast<double>(random() % 1000);
    sums.push_back({1, StateSpectrumOf(100, 1, y)});
  }
  const auto average = AverageOf(sums);
  ASSERT_EQ(average->yAxis.size(), mean.size());
  for (std::size_t i = 0; i < mean.size(); ++i) EXPECT_EQ(average->yAxis[i], mean[i] / 10.0);
}

TEST(AverageMultiStateSpectra, WithoutAGridIsAnError) {
  const Spectrum s = StateSpectrumOf(100, 1, {1, 2});
  Spectrum noStep = s;
  noStep.stepMDAC = 0.0;
  EXPECT_EQ(FailureOfAveraging(s, noStep), "Divide by zero error");
  Spectrum tiny = s;
  tiny.stepMDAC = 1e-12;
  EXPECT_EQ(FailureOfAveraging(s, tiny), "Too many points");
  Spectrum nowhere = s;
  nowhere.startMDAC = NAN;
  EXPECT_EQ(FailureOfAveraging(nowhere, nowhere), "Too many points");
  Spectrum doubled = s;
  doubled.appliedMZCalPts[1].MZ = doubled.appliedMZCalPts[0].MZ;
  EXPECT_EQ(FailureOfAveraging(s, doubled), "Divide by zero error");
}

TEST(AverageMultiStateSpectra, OfSpectraWithoutPointsHasNone) {
  const Spectrum empty = StateSpectrumOf(100, 1, {});
  EXPECT_THAT(AverageOf({{1, empty}, {1, empty}})->yAxis, ElementsAre());
}

TEST(AverageMultiStateSpectra, HasAllPointsOfItsSourcesWhateverTheirCalibration) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> part(0.0, 1.0);
  for (int trial = 0; trial < 2000; ++trial) {
    const double low = 10.0 + 10.0 * part(random);
    const std::vector<MZCalPt> points = {{L"", low, 400.0 + 5.0 * part(random)},
                                         {L"", 2000.0, 40000.0 + 9.0 * part(random)}};
    Spectrum s;
    s.tuneMZCalPts = s.appliedMZCalPts = points;
    s.startMDAC = 2000.0 + static_cast<double>(trial);
    s.stepMDAC = 1.0 + static_cast<double>(trial % 3);
    s.yAxis.assign(5 + static_cast<std::size_t>(trial % 7), 1.0);
    MZAssign(s);
    s.AddStatus(Curve::STATUS_Y);
    const auto average = AverageOf({{1, s}, {1, s}});
    ASSERT_EQ(average->yAxis, s.yAxis) << trial;
    for (std::size_t i = 0; i < s.xAxis.size(); ++i) ASSERT_NEAR(average->xAxis[i], s.xAxis[i], 1e-9);
  }
}

TEST(AverageMultiStateSpectra, ReachesFromTheLowestToTheHighestMzEachByItsOwnCalibration) {
  // 20 DAC steps to an m/z, and 10 from another zero.
  const Spectrum fine = StateSpectrumOf(100, 1, {1, 1, 1}, TenthsFrom(0, 900));
  Spectrum other;
  other.tuneMZCalPts = other.appliedMZCalPts = {{L"", 0.0, 50.0}, {L"", 1000.0, 20050.0}};
  other.startMDAC = 2054.0;  // m/z 100.2
  other.stepMDAC = 4.0;      // 0.2 m/z
  other.yAxis = {5, 7, 9};
  MZAssign(other);
  other.AddStatus(Curve::STATUS_Y);
  const auto average = AverageOf({{1, fine}, {1, other}});
  ASSERT_EQ(average->yAxis.size(), 7u);
  const double expected[] = {1, 1, 3, 6, 7, 8, 9};
  for (std::size_t i = 0; i < 7; ++i) EXPECT_NEAR(average->yAxis[i], expected[i], 1e-6) << i;
  EXPECT_EQ(average->startMDAC, 1000.0);
  EXPECT_EQ(average->appliedMZCalPts, fine.appliedMZCalPts);
}

TEST(AverageMultiStateSpectra, DoesNotRoundTheStartOfItsGrid) {
  const auto average =
      AverageOf({{1, StateSpectrumOf(100.05, 1, {2, 2, 2})}, {1, StateSpectrumOf(100.05, 1, {4, 4, 4})}});
  EXPECT_NEAR(average->startMDAC, 1000.5, 1e-9);
  EXPECT_THAT(average->yAxis, ElementsAre(3, 3, 3));
}

TEST(AverageMultiStateSpectra, OfASumOfNoSpectrumIsAnError) {
  const Spectrum s = StateSpectrumOf(100, 1, {1, 2});
  EXPECT_THROW(AverageOf({{1, s}, {0, s}}), std::runtime_error);
}
