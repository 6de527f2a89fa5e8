#include <tool/commands/decon/EditSeries.h>

#include <gtest/gtest.h>

#include <stdexcept>

#include <fmt/format.h>

#include <tool/commands/decon/Proteins.h>
#include <tool/commands/decon/SeriesRows.h>

namespace tests {
namespace {

using TslBL::CSSeries;
using TslBL::DeconSpectrum;
using TslTool::SeriesEdit;

const DeconSpectrum& Found() {
  static const TslTool::LoadedSpectrum loaded = WithSeries();
  return TslTool::DeconvolvedOf(loaded);
}

DeconSpectrum Edited(const SeriesEdit& edit) {
  DeconSpectrum spectrum = Found();
  TslTool::EditSeries(spectrum, edit);
  return spectrum;
}

std::string Failure(const SeriesEdit& edit) {
  try {
    Edited(edit);
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

std::size_t PeaksOf(const DeconSpectrum& spectrum, std::uint32_t id) {
  return spectrum.QCSSeriesPeakInfoArray({CSSeries::Unresolved, id}).size();
}

TEST(EditSeries, RemovesASeries) {
  EXPECT_EQ(PeaksOf(Edited({SeriesEdit::RemoveSeries, "UB", {}}), 2), 0U);
  EXPECT_GT(PeaksOf(Found(), 2), 0U);
}

TEST(EditSeries, RemovesThePeakNearestToAnMz) {
  const DeconSpectrum spectrum = Edited({SeriesEdit::RemovePeaks, "UA", {kLarge.Mz(17) + 0.3}});
  EXPECT_EQ(PeaksOf(spectrum, 1), PeaksOf(Found(), 1) - 1);
  EXPECT_TRUE(spectrum.QCSSeriesChargePeakIds({CSSeries::Unresolved, 1}, 17).empty());
}

TEST(EditSeries, AddsAPeakThatWasRemoved) {
  DeconSpectrum spectrum = Edited({SeriesEdit::RemovePeaks, "UA", {kLarge.Mz(17)}});
  TslTool::EditSeries(spectrum, {SeriesEdit::AddPeaks, "UA", {kLarge.Mz(17)}});
  EXPECT_EQ(PeaksOf(spectrum, 1), PeaksOf(Found(), 1));
}

TEST(EditSeries, APeakIsInASeriesOnce) {
  EXPECT_EQ(Failure({SeriesEdit::AddPeaks, "UA", {kLarge.Mz(17)}}),
            "peaks cannot be added to series UA: the peak at m/z " + fmt::format("{}", kLarge.Mz(17)) +
                " is in it already");
}

TEST(EditSeries, TheSameSeriesIsNotAddedTwice) {
  EXPECT_EQ(Failure({SeriesEdit::AddSeries, "unresolved", {kLarge.Mz(16), kLarge.Mz(17)}}),
            "the unresolved series cannot be added: these peaks make series UA, which there is already");
}

TEST(EditSeries, AddsTheSeriesThatPeaksBelongTo) {
  DeconSpectrum spectrum = Edited({SeriesEdit::RemoveSeries, "UA", {}});
  TslTool::EditSeries(spectrum, {SeriesEdit::AddSeries, "unresolved", {kLarge.Mz(16), kLarge.Mz(17)}});
  EXPECT_NEAR(spectrum.Series.back().AvgMass, kLarge.mass, 0.1);
}

TEST(EditSeries, MayLeaveNothing) {
  DeconSpectrum spectrum = Found();
  while (!spectrum.Series.empty()) {
    const std::wstring label = DeconSpectrum::CSSeriesObjToLabel(spectrum.Series.front().Series);
    TslTool::EditSeries(spectrum, {SeriesEdit::RemoveSeries, {label.begin(), label.end()}, {}});
  }
  EXPECT_TRUE(spectrum.MassX.empty());
}

TEST(EditSeries, SaysWhatCannotBeDoneAndWhy) {
  EXPECT_EQ(Failure({SeriesEdit::RemoveSeries, "UZ", {}}),
            "series UZ cannot be removed: there is no such series");
  EXPECT_EQ(Failure({SeriesEdit::AddPeaks, "UA", {1490.0}}).substr(0, 78),
            "peaks cannot be added to series UA: there is no peak at m/z 1490; the nearest ");
  EXPECT_EQ(Failure({SeriesEdit::RemovePeaks, "UA", {1030.97}}),
            "peaks cannot be removed from series UA: the peak at m/z 1030.97 is not in it");
}

TEST(EditSeries, SaysThatASeriesToBeAddedIsNone) {
  EXPECT_EQ(Failure({SeriesEdit::AddSeries, "resolved", {kLarge.Mz(16)}}),
            "the resolved series cannot be added: No Charge State Deconvolution results found with current "
            "settings.");
}

// A peak far from all others.
TEST(EditSeries, SaysThatPeaksMakeNoSeriesBesideOthers) {
  std::vector<double> mz = {400.0};
  for (int charge = kLarge.highCharge; charge >= kLarge.lowCharge; --charge) mz.push_back(kLarge.Mz(charge));
  TslTool::LoadedSpectrum loaded;
  loaded.isPeakList = true;
  loaded.spectrum = TslTool::PeakListSpectrum(mz, std::vector<double>(mz.size(), 100.0));
  const TslTool::LoadedSpectrum found = WithSeries(std::move(loaded));
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(found);
  const std::size_t before = spectrum.Series.size();
  ASSERT_GT(before, 0U);
  try {
    TslTool::EditSeries(spectrum, {SeriesEdit::AddSeries, "unresolved", {400.0}});
    ADD_FAILURE();
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(
        e.what(),
        "the unresolved series cannot be added: No Charge State Deconvolution results found with current "
        "settings.");
  }
  EXPECT_EQ(spectrum.Series.size(), before);
}

TEST(EditSeries, FindsNoPeakWhereThereIsNone) {
  DeconSpectrum spectrum(*TslTool::PeakListSpectrum({}, {}));
  spectrum.AddStatus(TslBL::Curve::STATUS_CSDECON);
  EXPECT_THROW(TslTool::EditSeries(spectrum, {SeriesEdit::AddSeries, "unresolved", {500.0}}),
               std::runtime_error);
}

}  // namespace
}  // namespace tests
