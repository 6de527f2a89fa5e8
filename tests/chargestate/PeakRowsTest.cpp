#include <tslbl/chargestate/PeakRows.h>

#include <gtest/gtest.h>

#include <chargestate/DeconSample.h>
#include <tslbl/spectrum/PeakTable.h>

using namespace tests;

namespace {

// "id@mz=ampl" of each row.
std::string Text(const std::vector<PeakRow>& rows) {
  std::ostringstream out;
  for (const PeakRow& row : rows)
    out << (&row == rows.data() ? "" : " ") << row.Id << '@' << row.Mz << '=' << row.Ampl;
  return out.str();
}

}  // namespace

TEST(PeakRows, AreTheDataPeaksAtTheirMaxima) {
  EXPECT_EQ(Text(BuildPeakRows(SpectrumToDecon())), "0@105=51 1@115=52 2@125=53 3@135=54");
}

TEST(PeakRows, AreTheDataPeaksAtTheirCentroids) {
  DeconSpectrum s = SpectrumToDecon();
  s.CSParams.MZAssign = ChargeStateParams::Centroid;
  EXPECT_EQ(Text(BuildPeakRows(s)), "0@105.5=41 1@115.5=42 2@125.5=43 3@135.5=44");
}

TEST(PeakRows, HaveAreaSignalToNoiseAndResolution) {
  const DeconSpectrum s = SpectrumToDecon();
  const CurvePeak peak = TranslateCurvePeak(s, 2);
  EXPECT_EQ(BuildPeakRows(s)[2], (PeakRow{2, 125, 53, 302.5, peak.Signal2Noise, peak.Resolution}));
  EXPECT_GT(peak.Signal2Noise, 0.0);
  EXPECT_GT(peak.Resolution, 0.0);
}

TEST(PeakRows, HaveTheAreaForAmplitudeIfThatIsAskedFor) {
  DeconSpectrum s = WithOverlapPeaks();
  s.CSParams.PkIntensity = ChargeStateParams::Area;
  s.CSParams.UseOPD = true;
  for (const PeakRow& row : BuildPeakRows(s)) EXPECT_EQ(row.Ampl, row.Area);
}

TEST(PeakRows, AreThoseInARangeItsEndsIncluded) {
  DeconSpectrum s = SpectrumToDecon();
  s.CSParams.FullRange = false;
  s.CSParams.StartMz = 115.0;
  s.CSParams.EndMz = 125.0;
  EXPECT_EQ(Text(BuildPeakRows(s)), "1@115=52 2@125=53");
  s.CSParams.MZAssign = ChargeStateParams::Centroid;
  EXPECT_EQ(Text(BuildPeakRows(s)), "1@115.5=42");
  s.CSParams.FullRange = true;
  EXPECT_EQ(BuildPeakRows(s).size(), 4u);
}

TEST(PeakRows, LeaveOutOverlapPeaksUnlessTheyAreAskedFor) {
  EXPECT_EQ(Text(BuildPeakRows(WithOverlapPeaks())), "0@105=51 1@115=52 2@125=53 3@135=54");
}

TEST(PeakRows, HaveOverlapPeaksInThePlaceOfTheirDataPeaks) {
  DeconSpectrum s = WithOverlapPeaks();
  s.CSParams.UseOPD = true;
  EXPECT_EQ(Text(BuildPeakRows(s)), "0@105=51 3@135=54 4@114=21 5@117=21 6@124=21");
  const MZPeak peak = TranslateMZOverlapPeak(s, 1);
  EXPECT_EQ(BuildPeakRows(s)[3], (PeakRow{5, 117, 21, peak.Area, peak.Signal2Noise, peak.Resolution}));
}

TEST(PeakRows, HaveOverlapPeaksInARange) {
  DeconSpectrum s = WithOverlapPeaks();
  s.CSParams.UseOPD = true;
  s.CSParams.FullRange = false;
  s.CSParams.StartMz = 117.0;
  s.CSParams.EndMz = 134.0;
  EXPECT_EQ(Text(BuildPeakRows(s)), "5@117=21 6@124=21");
}

TEST(PeakRows, AreNoneWithoutPeaks) { EXPECT_TRUE(BuildPeakRows(DeconSpectrum()).empty()); }
