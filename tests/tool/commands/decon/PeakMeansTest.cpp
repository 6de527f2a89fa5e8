#include <tool/commands/decon/PeakMeans.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include <tool/commands/decon/Proteins.h>

namespace tests {
namespace {

using TslBL::PeakDetectParams;
using TslTool::LoadedSpectrum;
using TslTool::PeakMeans;

constexpr double kMean = 850.0;
constexpr double kSigma = 0.26;  // of a line
constexpr double kPoint = 0.05;

struct Isotopes {
  double mean;    // of a Poisson distribution of isotopes
  double charge;  // that divides their distance

  double Share(int k) const { return std::exp(k * std::log(mean) - mean - std::lgamma(k + 1.0)); }
};

// One line of 1000 at most over a baseline of 5, whose mean is kMean.
LoadedSpectrum LineOf(const Isotopes& isotopes) {
  LoadedSpectrum loaded;
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  TslBL::Spectrum& s = *loaded.spectrum;
  std::size_t apex = 0;
  for (int i = 0; i < 201; ++i) {
    s.xAxis.push_back(kMean - 5.013 + kPoint * i);
    double y = 0.0;
    for (int k = 0; k < 60; ++k) {
      const double u = (s.xAxis.back() - kMean - (k - isotopes.mean) / isotopes.charge) / kSigma;
      y += 1000.0 * isotopes.Share(k) * std::exp(-0.5 * u * u);
    }
    s.yAxis.push_back(y + 5.0);
    if (s.yAxis.back() > s.yAxis[apex]) apex = s.yAxis.size() - 1;
  }
  s.baseline.assign(s.yAxis.size(), 5.0);
  s.peakDetectParams.RetentionType = PeakDetectParams::CentroidTopPercent;
  s.peakDetectParams.Retention = 30.0;
  TslBL::PeakInfo& peak = s.peaks.emplace_back();
  peak.apexIdx = static_cast<std::uint32_t>(apex);
  peak.startIdx = peak.apexIdx - 60;
  peak.endIdx = peak.apexIdx + 60;
  return loaded;
}

// By tests of the formula over skews that proteins of 5 to 100 kDa have on a quadrupole.
TEST(PeakMeans, AreThoseOfSkewPeaks) {
  for (const Isotopes& isotopes : {Isotopes{4.0, 6.0}, {10.0, 15.0}, {10.0, 20.0}, {30.0, 40.0}}) {
    const LoadedSpectrum loaded = LineOf(isotopes);
    const double top = loaded.spectrum->xAxis[loaded.spectrum->peaks[0].apexIdx];
    const double variance = isotopes.mean / (isotopes.charge * isotopes.charge) + kSigma * kSigma;
    const double third = isotopes.mean / std::pow(isotopes.charge, 3);
    const double offTop = 0.5 * third / variance;  // of the maximum, to the first term
    EXPECT_NEAR(PeakMeans(loaded)[0], kMean, 0.1 * offTop) << isotopes.mean << " at " << isotopes.charge;
    EXPECT_LT(top, kMean);
  }
}

TEST(PeakMeans, OfEvenPeaksAreTheirMiddle) {
  EXPECT_NEAR(PeakMeans(LineOf({1e-9, 10.0}))[0], kMean, 0.01 * kPoint);
}

TEST(PeakMeans, AreNotKnownWhereThePeakIsCutAboveAFifth) {
  LoadedSpectrum loaded = LineOf({10.0, 15.0});
  loaded.spectrum->peaks[0].endIdx = loaded.spectrum->peaks[0].apexIdx + 5;
  EXPECT_TRUE(std::isnan(PeakMeans(loaded)[0]));
}

TEST(PeakMeans, AreNotKnownWhereTheUserTakesAnotherPosition) {
  LoadedSpectrum loaded = LineOf({10.0, 15.0});
  loaded.spectrum->peakDetectParams.Retention = 100.0;
  EXPECT_TRUE(PeakMeans(loaded).empty());
  loaded.spectrum->peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  EXPECT_TRUE(PeakMeans(loaded).empty());
}

TEST(PeakMeans, OfAPeakListAreNotKnown) {
  LoadedSpectrum loaded = LineOf({10.0, 15.0});
  loaded.isPeakList = true;
  EXPECT_TRUE(PeakMeans(loaded).empty());
}

TEST(PeakMeans, OfAPeakWithoutPointsBesideItsApexAreNotKnown) {
  LoadedSpectrum loaded = LineOf({10.0, 15.0});
  loaded.spectrum->peaks[0].startIdx = loaded.spectrum->peaks[0].apexIdx;
  EXPECT_TRUE(std::isnan(PeakMeans(loaded)[0]));
}

}  // namespace
}  // namespace tests
