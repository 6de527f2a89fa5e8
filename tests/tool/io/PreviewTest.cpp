#include <gtest/gtest.h>

#include <cmath>

#include <tool/frame/InputError.h>
#include <tool/io/Preview.h>

namespace tests {
namespace {

using namespace TslTool;

// A spectrum with lines of this width in points; of none, it is level.
LoadedSpectrum SpectrumWith(std::uint32_t scan, double width) {
  LoadedSpectrum loaded{scan, 0.0, std::make_unique<TslBL::Spectrum>()};
  for (int i = 0; i < 1000; ++i) {
    const double u = width > 0.0 ? (i % 200 - 100) / width : 0.0;
    loaded.spectrum->xAxis.push_back(i);
    loaded.spectrum->yAxis.push_back(width > 0.0 ? 100.0 * std::exp(-2.7726 * u * u) : 1.0);
  }
  return loaded;
}

// Spectra of these widths as scans 1, 2, 3 ...; a negative width cannot be loaded.
class FakeSpectra final : public SpectrumSource {
 public:
  explicit FakeSpectra(std::vector<double> widths) : widths_(std::move(widths)) {}

  std::function<LoadedSpectrum()> Next() override {
    if (next_ == widths_.size()) return {};
    const double width = widths_[next_++];
    return [scan = static_cast<std::uint32_t>(next_), width] {
      if (width < 0.0) throw InputError("a.run", "scan " + std::to_string(scan), "is damaged");
      return SpectrumWith(scan, width);
    };
  }
  std::optional<std::uint64_t> Count() const override { return widths_.size(); }
  std::string Format() const override { return "fake"; }
  std::optional<double> MzStep() const override { return 0.05; }
  std::vector<std::string> Warnings() const override { return {"is a fake"}; }
  std::vector<std::string> Notes() const override { return {"is taken for one"}; }

 private:
  std::vector<double> widths_;
  std::size_t next_ = 0;
};

std::unique_ptr<SpectrumSource> Fake(std::vector<double> widths) {
  return std::make_unique<FakeSpectra>(std::move(widths));
}

TEST(Preview, TellsTheMedianWidthOfTheSpectraThatShowPeaks) {
  auto source = Fake({12, 0, 8, 14});
  const Preview preview = LookAhead(source);
  EXPECT_NEAR(preview.pointsAcross, 12.0, 0.1);
  EXPECT_EQ(preview.spectra, 3U);
}

TEST(Preview, IsEmptyWithoutPeaksOrSpectra) {
  for (const auto& widths : {std::vector<double>{}, std::vector<double>{0, 0}}) {
    auto source = Fake(widths);
    EXPECT_EQ(LookAhead(source).pointsAcross, 0.0);
  }
}

// Of a spectrum with peaks at these places.
std::optional<double> EvenStepOf(double (*place)(int index)) {
  class OneSpectrum final : public SpectrumSource {
   public:
    explicit OneSpectrum(double (*place)(int)) : place_(place) {}
    std::function<LoadedSpectrum()> Next() override {
      if (std::exchange(done_, true)) return {};
      return [this] {
        LoadedSpectrum loaded = SpectrumWith(1, 12.0);
        for (int i = 0; double& x : loaded.spectrum->xAxis) x = place_(i++);
        return loaded;
      };
    }
    std::optional<std::uint64_t> Count() const override { return 1; }
    std::string Format() const override { return "one"; }

   private:
    double (*place_)(int);
    bool done_ = false;
  };
  std::unique_ptr<SpectrumSource> source = std::make_unique<OneSpectrum>(place);
  return LookAhead(source).evenStep;
}

TEST(Preview, TellsTheSpacingOfEvenPoints) {
  EXPECT_DOUBLE_EQ(EvenStepOf([](int i) { return 2.0 * i; }).value(), 2.0);
  EXPECT_DOUBLE_EQ(EvenStepOf([](int i) { return 2.0 * i + (i % 7 == 0 ? 0.3 : 0.0); }).value(), 2.0);
}

TEST(Preview, TellsNoSpacingOfUnevenPoints) {
  EXPECT_EQ(EvenStepOf([](int i) { return 1e-3 * i * i; }), std::nullopt);
}

TEST(Preview, AFewGapsDoNotMakePointsUneven) {
  EXPECT_DOUBLE_EQ(EvenStepOf([](int i) { return i + (i < 500 ? 0.0 : 30.0); }).value(), 1.0);
}

TEST(Preview, TellsThePointsOfASpectrum) {
  for (const double width : {0.0, 9.0}) {
    auto source = Fake({width});
    EXPECT_EQ(LookAhead(source).points, 1000.0);
  }
}

TEST(Preview, LooksOnWhereTheFirstSpectraShowNoPeak) {
  std::vector<double> widths(20, 0.0);
  widths.push_back(9.0);
  auto source = Fake(widths);
  EXPECT_NEAR(LookAhead(source).pointsAcross, 9.0, 0.1);
}

TEST(Preview, KeepsNoMoreThanItMay) {
  std::vector<double> widths(20, 0.0);
  widths.push_back(9.0);
  auto source = Fake(widths);
  EXPECT_EQ(LookAhead(source, 5000).spectra, 0U);
}

TEST(Preview, OfASourceOfItsOwnGoesToTheEndIfNeedBe) {
  std::vector<double> widths(20, 0.0);
  widths.push_back(9.0);
  const auto source = Fake(widths);
  EXPECT_NEAR(LookThrough(*source).pointsAcross, 9.0, 0.1);
}

TEST(Preview, OfASourceOfItsOwnEndsAtTheFirstDamage) {
  const auto source = Fake({9.0, -1.0, 12.0});
  EXPECT_EQ(LookThrough(*source).spectra, 1U);
}

TEST(Preview, LeavesEverySpectrumInItsPlace) {
  auto source = Fake(std::vector<double>(20, 9.0));
  LookAhead(source);
  std::uint32_t scans = 0;
  while (const auto load = source->Next()) EXPECT_EQ(load().scan, ++scans);
  EXPECT_EQ(scans, 20U);
}

TEST(Preview, LooksAtTheFirstEightOnly) {
  std::vector<double> widths(8, 9.0);
  widths.resize(100, 30.0);
  auto source = Fake(widths);
  EXPECT_EQ(LookAhead(source).spectra, 8U);
}

TEST(Preview, AFailureWaitsForItsTurn) {
  auto source = Fake({9, -1, 9});
  EXPECT_EQ(LookAhead(source).spectra, 2U);
  EXPECT_EQ(source->Next()().scan, 1U);
  EXPECT_THROW(source->Next()(), InputError);
  EXPECT_EQ(source->Next()().scan, 3U);
}

TEST(Preview, TheSourceTellsWhatItToldBefore) {
  auto source = Fake({9, 9});
  LookAhead(source);
  EXPECT_EQ(source->Count(), 2U);
  EXPECT_EQ(source->Format(), "fake");
  EXPECT_EQ(source->MzStep(), 0.05);
  EXPECT_EQ(source->Warnings(), std::vector<std::string>{"is a fake"});
  EXPECT_EQ(source->Notes(), std::vector<std::string>{"is taken for one"});
}

}  // namespace
}  // namespace tests
