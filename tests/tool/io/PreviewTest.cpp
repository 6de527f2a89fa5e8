#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include <tool/frame/InputError.h>
#include <tool/io/Preview.h>

namespace tests {
namespace {

using namespace TslTool;

struct Show {
  double width;  // of lines, in points
  double height = 1000.0;
};

// Counts over a background of 20, with five lines.
LoadedSpectrum SpectrumWith(std::uint32_t scan, const Show& show) {
  LoadedSpectrum loaded{scan, 0.0, std::make_unique<TslBL::Spectrum>()};
  std::mt19937_64 random(scan);
  for (int i = 0; i < 1000; ++i) {
    const double u = (i % 200 - 100) / show.width;
    const double mean = 20.0 + show.height * std::exp(-2.7726 * u * u);
    loaded.spectrum->xAxis.push_back(i);
    loaded.spectrum->yAxis.push_back(std::poisson_distribution<int>(mean)(random));
  }
  return loaded;
}

constexpr Show kNoise = {1.0, 0.0};
constexpr Show kDamaged = {-1.0};

// These spectra as scans 1, 2, 3 ...
class FakeSpectra final : public SpectrumSource {
 public:
  explicit FakeSpectra(std::vector<Show> shows) : shows_(std::move(shows)) {}

  std::function<LoadedSpectrum()> Next() override {
    if (next_ == shows_.size()) return {};
    const Show show = shows_[next_++];
    return [scan = static_cast<std::uint32_t>(next_), show] {
      if (show.width < 0.0) throw InputError("a.run", "scan " + std::to_string(scan), "is damaged");
      return SpectrumWith(scan, show);
    };
  }
  std::optional<std::uint64_t> Count() const override { return shows_.size(); }
  std::string Format() const override { return "fake"; }
  std::optional<double> MzStep() const override { return 0.05; }
  std::vector<std::string> Warnings() const override { return {"is a fake"}; }
  std::vector<std::string> Notes() const override { return {"is taken for one"}; }

 private:
  std::vector<Show> shows_;
  std::size_t next_ = 0;
};

using Shows = std::vector<Show>;

std::unique_ptr<SpectrumSource> Fake(Shows shows) { return std::make_unique<FakeSpectra>(std::move(shows)); }

Shows operator+(Shows shows, const Shows& more) {
  shows.insert(shows.end(), more.begin(), more.end());
  return shows;
}

Preview Ahead(Shows shows) {
  auto source = Fake(std::move(shows));
  return LookAhead(source);
}

TEST(Preview, TellsTheWidthOfThePeaks) {
  const Preview preview = Ahead({{12}, kNoise, {12}});
  EXPECT_NEAR(preview.pointsAcross, 12.0, 0.3);
  EXPECT_EQ(preview.spectra, 2U);
}

TEST(Preview, IsEmptyWithoutPeaksOrSpectra) {
  for (const Shows& shows : {Shows(), Shows(100, kNoise)}) {
    EXPECT_EQ(Ahead(shows).pointsAcross, 0.0);
    EXPECT_EQ(Ahead(shows).spectra, 0U);
  }
}

// Weak ions in every spectrum, and strong ones where something elutes.
TEST(Preview, StrongPeaksOfFewSpectraOutweighWeakOnesOfMany) {
  EXPECT_NEAR(Ahead(Shows(40, {12, 100}) + Shows(4, {6, 10000}) + Shows(36, {12, 100})).pointsAcross, 6.0,
              0.2);
}

TEST(Preview, WhereSpectraDisagreeTheStrongestDecide) {
  EXPECT_NEAR(Ahead({{35, 300}, {6, 10000}, {35, 300}}).pointsAcross, 6.0, 0.2);
  EXPECT_NEAR(Ahead({{35, 10000}, {6, 300}, {6, 300}}).pointsAcross, 35.0, 1.0);
}

TEST(Preview, WhereSomeAreFarNarrowerTheseDecide) {
  EXPECT_NEAR(Ahead({{40}, {40}, {6}, {40}}).pointsAcross, 6.0, 0.6);
}

TEST(Preview, SpectraOfNoiseCountForNothing) {
  for (const std::size_t before : {0U, 1U, 10U, 57U})
    EXPECT_NEAR(Ahead(Shows(before, kNoise) + Shows{{6}, {6}, {6}} + Shows(57 - before, kNoise)).pointsAcross,
                6.0, 0.3);
}

// Lines of 40 counts on a point of background in ten, which tell nothing each.
LoadedSpectrum WeakSpectrum(double scale, double height = 3.1) {
  LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  std::mt19937_64 random(1);
  for (int i = 0; i < 20000; ++i) {
    const double u = (i % 1000 - 500) / 12.0;
    const double mean = 0.1 + height * std::exp(-2.7726 * u * u);
    loaded.spectrum->xAxis.push_back(0.05 * i);
    loaded.spectrum->yAxis.push_back(scale * std::poisson_distribution<int>(mean)(random));
  }
  return loaded;
}

class OneSpectrum final : public SpectrumSource {
 public:
  explicit OneSpectrum(LoadedSpectrum only) : only_(std::move(only)) {}
  std::function<LoadedSpectrum()> Next() override {
    if (std::exchange(done_, true)) return {};
    return [this] { return std::move(only_); };
  }
  std::optional<std::uint64_t> Count() const override { return 1; }
  std::string Format() const override { return "one"; }

 private:
  LoadedSpectrum only_;
  bool done_ = false;
};

Preview PreviewOf(LoadedSpectrum loaded) {
  std::unique_ptr<SpectrumSource> source = std::make_unique<OneSpectrum>(std::move(loaded));
  return LookAhead(source);
}

TEST(Preview, CountsOfWeakPeaksTellTheWidthTogether) {
  for (const double scale : {1.0, 12.5}) {
    const Preview preview = PreviewOf(WeakSpectrum(scale));
    EXPECT_NEAR(preview.pointsAcross, 12.0, 0.6);
    EXPECT_NEAR(preview.evenStep.value(), 0.05, 1e-9);
  }
}

TEST(Preview, WeakPeaksTellNothingWhereNothingTellsCounts) {
  LoadedSpectrum loaded = WeakSpectrum(1.0);
  for (int i = 0; double& value : loaded.spectrum->yAxis) value += 0.01 * std::sin(i++);
  EXPECT_EQ(PreviewOf(std::move(loaded)).pointsAcross, 0.0);
}

TEST(Preview, CountsWhoseNeighboursDifferByLessAreNoPeaks) {
  LoadedSpectrum loaded = WeakSpectrum(1.0, 0.0);
  std::vector<double>& y = loaded.spectrum->yAxis;
  for (std::size_t i = 0; i + 2 < y.size(); ++i) y[i] += y[i + 1] + y[i + 2];
  EXPECT_EQ(PreviewOf(std::move(loaded)).pointsAcross, 0.0);
}

// As of a rounded voltage: what stands out decides.
TEST(Preview, StepsThatAreNoCountsTellNothingTogether) {
  LoadedSpectrum loaded = WeakSpectrum(1.0);
  loaded.spectrum->yAxis[1] = 0.125;
  EXPECT_LT(PreviewOf(std::move(loaded)).pointsAcross, 10.0);
}

// Of a spectrum with peaks at these places.
std::optional<double> EvenStepOf(double (*place)(int index)) {
  LoadedSpectrum loaded = SpectrumWith(1, {12.0});
  for (int i = 0; double& x : loaded.spectrum->xAxis) x = place(i++);
  return PreviewOf(std::move(loaded)).evenStep;
}

TEST(Preview, TellsTheSpacingOfEvenPoints) {
  EXPECT_DOUBLE_EQ(EvenStepOf([](int i) { return 2.0 * i; }).value(), 2.0);
  EXPECT_NEAR(EvenStepOf([](int i) { return 2.0 * i + (i % 7 == 0 ? 0.3 : 0.0); }).value(), 2.0, 0.02);
}

TEST(Preview, TellsNoSpacingOfUnevenPoints) {
  EXPECT_EQ(EvenStepOf([](int i) { return 1e-3 * i * i; }), std::nullopt);
}

// From 0.02 to 0.04 between the first points and the last.
TEST(Preview, TellsTheShorterStepsOfATimeOfFlight) {
  EXPECT_NEAR(EvenStepOf([](int i) { return 1e-5 * (i + 1000.0) * (i + 1000.0); }).value(), 0.021, 0.0005);
}

TEST(Preview, AFewGapsDoNotMakePointsUneven) {
  EXPECT_DOUBLE_EQ(EvenStepOf([](int i) { return i + (i < 500 ? 0.0 : 30.0); }).value(), 1.0);
}

TEST(Preview, TellsThePointsOfASpectrum) {
  for (const Show& show : {kNoise, Show{9.0}}) EXPECT_EQ(Ahead({show}).points, 1000.0);
}

TEST(Preview, LooksOnWhereTheFirstSpectraShowNoPeak) {
  EXPECT_NEAR(Ahead(Shows(100, kNoise) + Shows{{9}}).pointsAcross, 9.0, 0.5);
}

TEST(Preview, KeepsNoMoreThanItMay) {
  auto source = Fake(Shows(20, kNoise) + Shows{{9}});
  const Preview preview = LookAhead(source, 5000);
  EXPECT_EQ(preview.spectra, 0U);
  EXPECT_FALSE(preview.isSettled);
}

TEST(Preview, IsSettledAtTheEndOrWhenEightSpectraShowStrongPeaks) {
  EXPECT_TRUE(Ahead({}).isSettled);
  EXPECT_TRUE(Ahead(Shows(3, kNoise)).isSettled);
  EXPECT_TRUE(Ahead(Shows(8, {9, 10000})).isSettled);
  EXPECT_TRUE(LookThrough(*Fake(Shows(8, {9, 10000}))).isSettled);
}

TEST(Preview, OfASourceOfItsOwnGoesToTheEndIfNeedBe) {
  EXPECT_NEAR(LookThrough(*Fake(Shows(100, kNoise) + Shows{{9}})).pointsAcross, 9.0, 0.5);
}

TEST(Preview, OfASourceOfItsOwnEndsAtTheFirstDamage) {
  EXPECT_EQ(LookThrough(*Fake({{9}, kDamaged, {9}})).spectra, 1U);
}

TEST(Preview, LeavesEverySpectrumInItsPlace) {
  auto source = Fake(Shows(20, {9}));
  LookAhead(source);
  std::uint32_t scans = 0;
  while (const auto load = source->Next()) EXPECT_EQ(load().scan, ++scans);
  EXPECT_EQ(scans, 20U);
}

TEST(Preview, LooksAtNoMoreThanEightWithStrongPeaks) {
  EXPECT_EQ(Ahead(Shows(8, {9, 10000}) + Shows(92, {30, 20000})).spectra, 8U);
}

TEST(Preview, OfManyAlikeLooksAtThoseThatRiseHigher) {
  EXPECT_EQ(Ahead(Shows(100, {9, 40})).spectra, Ahead(Shows(50, {9, 40})).spectra);
}

TEST(Preview, AFailureWaitsForItsTurn) {
  auto source = Fake({{9}, kDamaged, {9}});
  EXPECT_EQ(LookAhead(source).spectra, 2U);
  EXPECT_EQ(source->Next()().scan, 1U);
  EXPECT_THROW(source->Next()(), InputError);
  EXPECT_EQ(source->Next()().scan, 3U);
}

TEST(Preview, TheSourceTellsWhatItToldBefore) {
  auto source = Fake({{9}, {9}});
  LookAhead(source);
  EXPECT_EQ(source->Count(), 2U);
  EXPECT_EQ(source->Format(), "fake");
  EXPECT_EQ(source->MzStep(), 0.05);
  EXPECT_EQ(source->Warnings(), std::vector<std::string>{"is a fake"});
  EXPECT_EQ(source->Notes(), std::vector<std::string>{"is taken for one"});
}

}  // namespace
}  // namespace tests
