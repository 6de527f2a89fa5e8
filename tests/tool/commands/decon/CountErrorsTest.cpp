#include <tool/commands/decon/CountErrors.h>

#include <gtest/gtest.h>

#include <tslbl/closed/engines/IsotopePattern.h>
#include <cmath>

namespace tests {
namespace {

using TslBL::CSSeries;
using TslTool::ReportedPeak;

constexpr double kCarrier = 1.007276;

// The average molecule of so many Da at one charge, the strongest isotope so far above the noise.
struct OneCharge {
  OneCharge(double mass, std::uint32_t charge, double top) {
    const auto pattern = TslMath::MakeIsotopePattern(
        TslMath::ScaleToMass(TslMath::ParseFormula("C117 H184 N32 O35 S1"), mass));
    TslBL::CSSeriesInfo series;
    series.Series = {CSSeries::Resolved, 1};
    series.AvgMass = pattern.monoMass;
    for (std::size_t k = 0; k < pattern.probability.size(); ++k) {
      const double signal = top * pattern.probability[k] / pattern.probability[pattern.Top()];
      if (signal < 3) continue;
      TslBL::CSSeriesPeakInfo& member = series.Peaks.emplace_back();
      member.PeakId = static_cast<std::uint32_t>(peaks.size());
      member.Charge = charge;
      member.MZ = (pattern.monoMass + pattern.mass[k]) / charge + kCarrier;
      ReportedPeak& peak = peaks.emplace_back();
      peak.row.Mass = member.MZ;
      peak.row.Area = peak.row.Ampl = peak.row.Signal2Noise = signal;
      peak.row.Resolution = 50000;
    }
    spectrum.Series.push_back(series);
    spectrum.CSParams.Resolved.MaxResolution = 100000;
    spectrum.CSParams.Resolved.MzAccuracy = 10;
  }
  double Error() const { return TslTool::CountErrors(spectrum, peaks).at(0); }

  TslBL::DeconSpectrum spectrum;
  std::vector<ReportedPeak> peaks;
};

TEST(CountErrors, OfSmallMoleculesAreNone) { EXPECT_EQ(OneCharge(1500, 2, 50).Error(), 0); }

TEST(CountErrors, AreLargeForLargeMoleculesWithLittleSignal) {
  EXPECT_LT(OneCharge(12000, 14, 500).Error(), 0.02);
  EXPECT_GT(OneCharge(12000, 14, 7).Error(), 0.1);
}

TEST(CountErrors, OfUnresolvedSeriesAreNone) {
  OneCharge one(12000, 14, 7);
  one.spectrum.Series[0].Series.Type = CSSeries::Unresolved;
  EXPECT_EQ(one.Error(), 0);
}

TEST(CountErrors, StandInTheOrderOfTheSeries) {
  OneCharge one(12000, 14, 7);
  TslBL::CSSeriesInfo unresolved;
  unresolved.Series = {CSSeries::Unresolved, 1};
  one.spectrum.Series.insert(one.spectrum.Series.begin(), unresolved);
  const auto errors = TslTool::CountErrors(one.spectrum, one.peaks);
  ASSERT_EQ(errors.size(), 2U);
  EXPECT_EQ(errors[0], 0);
  EXPECT_GT(errors[1], 0.1);
}

}  // namespace
}  // namespace tests
