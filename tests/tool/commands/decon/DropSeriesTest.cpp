#include <tool/commands/decon/DropSeries.h>

#include <gtest/gtest.h>

#include <cmath>

#include <tool/commands/decon/Proteins.h>
#include <tool/commands/decon/SeriesRows.h>

namespace tests {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::DeconSpectrum;

TEST(DropSeries, TakesOutWhatIsUnwantedAndDrawsTheCurveAnew) {
  const auto loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  const std::size_t all = spectrum.Series.size();
  TslTool::DropSeries(spectrum, [](const CSSeriesInfo& series) { return series.AvgMass > 15000; });
  EXPECT_EQ(spectrum.Series.size(), all - 1);
  EXPECT_LT(spectrum.MassX.back(), 15000.0);
}

TEST(DropSeries, LeavesNothingWhereAllAreUnwanted) {
  const auto loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  TslTool::DropSeries(spectrum, [](const CSSeriesInfo&) { return true; });
  EXPECT_TRUE(spectrum.Series.empty());
  EXPECT_TRUE(spectrum.MassX.empty());
}

TEST(DropSeries, ChangesNothingWhereAllAreWanted) {
  const auto loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  TslTool::DropSeries(spectrum, [](const CSSeriesInfo&) { return false; });
  EXPECT_EQ(spectrum, TslTool::DeconvolvedOf(loaded));
}

// One resolved series of charge 2 of two fitted peaks, the second of which may be off by so many points.
DeconSpectrum WithFittedPair(double pointsOff) {
  const auto loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  CSSeriesInfo series;
  series.Series = {TslBL::CSSeries::Resolved, 9};
  series.AvgMass = 1500.0;
  for (const double off : {0.01, pointsOff}) {
    TslBL::OverlapPeakInfo fit;
    fit.Position = 1000.0 + 10.0 * static_cast<double>(series.Peaks.size());
    fit.Height = 100.0;
    fit.FWHM = 8.0;
    fit.Fit5 = off;
    TslBL::CSSeriesPeakInfo& member = series.Peaks.emplace_back();
    member.PeakId = spectrum.QNumPeaks() + static_cast<std::uint32_t>(spectrum.overlapPeaks.size());
    member.Charge = 2;
    member.MZ = spectrum.FractionalIndexToXAxisVal(fit.Position);
    spectrum.overlapPeaks.push_back(fit);
  }
  spectrum.Series.push_back(series);
  return spectrum;
}

TEST(DropUnsureSeries, TakesOutThoseOfWhichAPeakMayStandAnywhere) {
  struct Case {
    double off;  // points of 0.05 m/z; twice that in mass
    bool isKept;
  };
  for (const Case& c : {Case{1.9, true}, {2.1, false}, {900.0, false}, {std::nan(""), false}}) {
    DeconSpectrum spectrum = WithFittedPair(c.off);
    const std::size_t all = spectrum.Series.size();
    TslTool::DropUnsureSeries(spectrum);
    EXPECT_EQ(spectrum.Series.size(), c.isKept ? all : all - 1) << c.off;
  }
}

}  // namespace
}  // namespace tests
