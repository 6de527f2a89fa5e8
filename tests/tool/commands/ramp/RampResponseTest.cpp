#include <tool/commands/ramp/RampResponse.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/ramp/RampError.h>
#include <tool/simulate/TestMethods.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TslBL::MZPeak;
using TslBL::RampAlgorithmParams;
using TslTool::MakeRampResponse;
using TslTool::RampResponse;
using TslTool::RampSpectra;
using TslTool::RampSteps;

MZPeak Peak(double mass, double ampl, double res) {
  MZPeak peak;
  TslBL::WMZPeakField(peak, TslBL::MZPeakField::Mass, mass);
  TslBL::WMZPeakField(peak, TslBL::MZPeakField::Ampl, ampl);
  TslBL::WMZPeakField(peak, TslBL::MZPeakField::Res, res);
  return peak;
}

RampSteps Steps(const std::vector<double>& values) {
  RampSteps steps;
  steps.lenses = {TslBL::TuneField::CapExit};
  for (const double value : values) steps.values.push_back({value});
  return steps;
}

constexpr RampAlgorithmParams::Types kAmplitude = RampAlgorithmParams::Amplitude;
RampAlgorithmParams By(RampAlgorithmParams::Types type) {
  RampAlgorithmParams params;
  params.Type = type;
  return params;
}

TEST(RampResponse, SpectraOfAStepAreAveraged) {
  const RampSpectra spectra = {{1, {0, {Peak(322.0, 100, 400)}}},
                               {2, {0, {Peak(322.2, 300, 600)}}},
                               {3, {1, {Peak(322.1, 150, 500)}}}};
  const RampResponse response = MakeRampResponse(Steps({1, 2}), {322}, spectra, By(kAmplitude));
  EXPECT_THAT(response.spectra, ElementsAre(2, 1));
  const MZPeak& mean = response.peaks[0][0].Peak;
  EXPECT_DOUBLE_EQ(mean.Mass, 322.1);
  EXPECT_DOUBLE_EQ(mean.Ampl, 200);
  EXPECT_DOUBLE_EQ(TslBL::QMZPeakField(mean, TslBL::MZPeakField::Res), 500);
  EXPECT_THAT(response.best, ElementsAre(0));
  EXPECT_EQ(response.overall, 0U);
}

TEST(RampResponse, APeakThatASpectrumLacksCountsAsNoAmplitude) {
  const RampSpectra spectra = {
      {1, {0, {Peak(322, 100, 400)}}}, {2, {0, {MZPeak()}}}, {3, {1, {Peak(322, 60, 400)}}}};
  const RampResponse response = MakeRampResponse(Steps({1, 2}), {322}, spectra, By(kAmplitude));
  EXPECT_DOUBLE_EQ(response.peaks[0][0].Peak.Ampl, 50);
  EXPECT_DOUBLE_EQ(TslBL::QMZPeakField(response.peaks[0][0].Peak, TslBL::MZPeakField::Res), 400);
  EXPECT_THAT(response.best, ElementsAre(1));
}

TEST(RampResponse, TheOverallBestIsWeakAtNoMz) {
  const RampSpectra spectra = {{1, {0, {Peak(100, 100, 1), Peak(500, 50, 1)}}},
                               {2, {1, {Peak(100, 95, 1), Peak(500, 95, 1)}}},
                               {3, {2, {Peak(100, 40, 1), Peak(500, 100, 1)}}}};
  RampAlgorithmParams params = By(kAmplitude);
  params.Percent = 10;
  const RampResponse response = MakeRampResponse(Steps({1, 2, 3}), {100, 500}, spectra, params);
  EXPECT_THAT(response.best, ElementsAre(0, 2));
  EXPECT_EQ(response.overall, 1U);
}

// The resolution of the first step is noise, where hardly an ion comes through.
TEST(RampResponse, WhereNoStepIsNearTheBestAtAllMzTheNearestCounts) {
  const RampSpectra spectra = {{1, {0, {Peak(100, 10, 900), Peak(500, 10, 900)}}},
                               {2, {1, {Peak(100, 100, 500), Peak(500, 60, 500)}}},
                               {3, {2, {Peak(100, 80, 400), Peak(500, 75, 400)}}},
                               {4, {3, {Peak(100, 50, 300), Peak(500, 100, 300)}}}};
  const RampResponse response = MakeRampResponse(Steps({1, 2, 3, 4}), {100, 500}, spectra,
                                                 By(RampAlgorithmParams::ResolutionAtAmplitude));
  EXPECT_THAT(response.best, ElementsAre(1, 3));
  EXPECT_EQ(response.overall, 2U);
  EXPECT_THAT(RampRemarks(response, ShortTune()),
              testing::Contains(
                  "overall: no step is within 1 % of the best at all m/z; the one taken is within 25 %"));
}

TEST(RampResponse, RemarksTellOfEndsAndOfWhatIsMissing) {
  RampSteps steps = Steps({1, 2, 3});
  steps.beside = {"Skimmer"};
  const RampSpectra spectra = {{1, {0, {Peak(100, 10, 1), MZPeak(), MZPeak()}}},
                               {2, {1, {Peak(100, 20, 1), MZPeak(), Peak(500, 1, 1)}}},
                               {3, {2, {Peak(100, 10, 1), MZPeak(), Peak(500, 3, 1)}}}};
  const RampResponse response = MakeRampResponse(steps, {100, 300, 500}, spectra, By(kAmplitude));
  EXPECT_THAT(response.mz, ElementsAre(100, 500));
  EXPECT_THAT(
      RampRemarks(response, ShortTune()),
      ElementsAre("the tunes differ in Skimmer, too, which is averaged",
                  "m/z 300: no step of the ramp shows a peak there; it is left out",
                  "m/z 500: 1 of 3 steps show no peak there, which counts as amplitude and resolution 0",
                  "m/z 500: the best CapExit, 3, stands at an end of the ramp; a better one may lie beyond"));
  const RampSpectra good = {{1, {0, {Peak(9, 1, 1)}}}, {2, {1, {Peak(9, 2, 1)}}}, {3, {2, {Peak(9, 1, 1)}}}};
  EXPECT_THAT(RampRemarks(MakeRampResponse(Steps({1, 2, 3}), {9}, good, By(kAmplitude)), ShortTune()),
              IsEmpty());
}

TEST(RampResponse, WithoutPeaksOrSpectraThereIsNone) {
  const RampSpectra empty = {{1, {0, {MZPeak()}}}, {2, {1, {MZPeak()}}}};
  EXPECT_THROW(MakeRampResponse(Steps({1, 2}), {322}, empty, {}), TslTool::RampError);
  const RampSpectra one = {{1, {0, {Peak(322, 1, 1)}}}};
  EXPECT_THROW(MakeRampResponse(Steps({1, 2}), {322}, one, {}), TslTool::RampError);
}

}  // namespace
}  // namespace tests
