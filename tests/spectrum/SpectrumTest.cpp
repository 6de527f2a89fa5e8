#include <RecordCheck.h>

#include <curve/TestCurve.h>
#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/spectrum/StateSpectrum.h>
#include <memory>

using namespace TslBL;
using namespace tests;

namespace {

PeakInfo SamplePeak() {
  PeakInfo p;
  p.startIdx = 1;
  p.apexIdx = 2;
  p.apexAmpl = 30.5;
  p.endIdx = 3;
  double next = 0.25;
  for (double PeakInfo::*value :
       {&PeakInfo::maxIdx, &PeakInfo::maxAmpl, &PeakInfo::maxBaseline, &PeakInfo::centroidIdx,
        &PeakInfo::centroidAmpl, &PeakInfo::baselineAmpl, &PeakInfo::halfHeightLeftIdx,
        &PeakInfo::halfHeightRightIdx, &PeakInfo::areaIntercept, &PeakInfo::areaStartIdx,
        &PeakInfo::areaEndIdx, &PeakInfo::area, &PeakInfo::noiseAmpl})
    p.*value = next++;
  p.useMax = true;
  p.overlapGroup = 1;
  return p;
}

void FillCurve(Curve& c) {
  c.id = 11;
  c.name = L"RET (1.500)";
  c.status = 0x7B;
  c.sourceListA = {12, 13};
  c.sourceListB = {14};
  c.xAxis = {100.0, 100.5, 101.0, 101.5};
  c.smoothParams.Passes = 3;
  c.yAxis = {1.5, 2.5, 30.5, 4.5};
  c.baselineParams.SegSize = 251;
  c.baseline = {0.5, 0.625, 0.75, 0.875};
  c.noiseParams.SegSize = 252;
  c.noise = {0.125, 0.25, 0.375, 0.5};
  c.thresholdParams.Value = 16.5;
  c.peakDetectParams.SN = 5;
  c.peaks = {SamplePeak()};
  c.largestAreaIdx = 0;
  c.largestMaxIdx = -2;
  c.largestCentroidIdx = 1;
  c.evals = {CurveEval(c.smoothParams), CurveEval(c.peakDetectParams)};
  c.annotations = {{100.25, 17.5, L"water"}};
}

OverlapPeakInfo SampleFit() {
  OverlapPeakInfo fit;
  fit.GroupId = 1;
  fit.Position = 1.75;
  fit.Height = 9.5;
  return fit;
}

Spectrum SampleSpectrum() {
  Spectrum s;
  FillCurve(s);
  s.tuneId = 21;
  s.tuneMZCalPts = {{L"Default Low", 5.0, 100.0}, {L"Default High", 3000.0, 60000.0}};
  s.appliedMZCalPts = {{L"PEG 3", 151.0, 3021.5}};
  s.startMDAC = 2000.0;
  s.stepMDAC = 2.0;
  s.timeStamp = 90000.0;
  s.tic = 123.5;
  s.opdParams.MaxPeaks = 22;
  s.overlapPeaks = {SampleFit()};
  return s;
}

}  // namespace

TEST(AllRecords, Spectrum) {
  CheckRecord<Spectrum>({
      {"id", [](auto& r) { r.id = 1; }},
      {"name", [](auto& r) { r.name = L"n"; }},
      {"status", [](auto& r) { r.status = Curve::STATUS_Y; }},
      {"sourceListA", [](auto& r) { r.sourceListA = {1}; }},
      {"sourceListA.id", [](auto& r) { r.sourceListA[0] = 2; }},
      {"sourceListB", [](auto& r) { r.sourceListB = {1}; }},
      {"sourceListB.id", [](auto& r) { r.sourceListB[0] = 2; }},
      {"xAxis", [](auto& r) { r.xAxis = {1.0}; }},
      {"smoothParams", [](auto& r) { r.smoothParams.Passes = 2; }},
      {"yAxis", [](auto& r) { r.yAxis = {1.0}; }},
      {"baselineParams", [](auto& r) { r.baselineParams.Auto = !r.baselineParams.Auto; }},
      {"baseline", [](auto& r) { r.baseline = {1.0}; }},
      {"noiseParams", [](auto& r) { r.noiseParams.Auto = !r.noiseParams.Auto; }},
      {"noise", [](auto& r) { r.noise = {1.0}; }},
      {"thresholdParams", [](auto& r) { r.thresholdParams.Value = 1.0; }},
      {"peakDetectParams", [](auto& r) { r.peakDetectParams.SN = 9; }},
      {"peaks", [](auto& r) { r.peaks.resize(1); }},
      {"largestAreaIdx", [](auto& r) { r.largestAreaIdx = 1; }},
      {"largestMaxIdx", [](auto& r) { r.largestMaxIdx = 1; }},
      {"largestCentroidIdx", [](auto& r) { r.largestCentroidIdx = 1; }},
      {"evals", [](auto& r) { r.evals.resize(1); }},
      {"annotations", [](auto& r) { r.annotations.resize(1); }},
      {"annotations.x", [](auto& r) { r.annotations[0].x = 1.5; }},
      {"annotations.y", [](auto& r) { r.annotations[0].y = 1.5; }},
      {"annotations.text", [](auto& r) { r.annotations[0].text = L"t"; }},
      {"tuneId", [](auto& r) { r.tuneId = 1; }},
      {"tuneMZCalPts", [](auto& r) { r.tuneMZCalPts.resize(1); }},
      {"appliedMZCalPts", [](auto& r) { r.appliedMZCalPts.resize(1); }},
      {"startMDAC", [](auto& r) { r.startMDAC = 1.0; }},
      {"stepMDAC", [](auto& r) { r.stepMDAC = 1.0; }},
      {"timeStamp", [](auto& r) { r.timeStamp = 1.0; }},
      {"tic", [](auto& r) { r.tic = 1.0; }},
      {"opdParams", [](auto& r) { r.opdParams.SingleGroup = true; }},
      {"overlapPeaks", [](auto& r) { r.overlapPeaks.resize(1); }},
  });
}
TEST(Golden, Spectrum) { CheckGolden(SampleSpectrum(), "Spectrum.v1"); }
TEST(CutShort, Spectrum) { CheckCutShort(SampleSpectrum()); }

TEST(Spectrum, EvaluatesWithThePresetsForMassSpectra) {
  const Spectrum s;
  EXPECT_EQ(s.smoothParams, SmoothParams::DefaultMS());
  EXPECT_EQ(s.baselineParams, BaselineParams::DefaultMS());
  EXPECT_EQ(s.noiseParams, NoiseParams::DefaultMS());
  EXPECT_EQ(s.peakDetectParams, PeakDetectParams::DefaultMS());
  EXPECT_EQ(s.thresholdParams, ThresholdParams());
}

TEST(Spectrum, IsEmptyByDefault) {
  const Spectrum s;
  EXPECT_EQ(s.id, Curve::ID_INVALID);
  EXPECT_EQ(s.status, 0u);
  EXPECT_EQ(s.tuneId, 0u);
  EXPECT_TRUE(s.tuneMZCalPts.empty() && s.appliedMZCalPts.empty() && s.overlapPeaks.empty());
  EXPECT_EQ(s.startMDAC, 0.0);
  EXPECT_EQ(s.stepMDAC, 0.0);
  EXPECT_EQ(s.timeStamp, 0.0);
  EXPECT_EQ(s.tic, 0.0);
  EXPECT_EQ(s.opdParams, OPDParams());
}

TEST(Spectrum, CloneIsADeepCopy) {
  const Spectrum s = SampleSpectrum();
  const std::unique_ptr<Curve> clone(s.Clone());
  auto& copy = dynamic_cast<Spectrum&>(*clone);
  EXPECT_EQ(copy, s);
  copy.overlapPeaks[0].Height = 0.0;
  copy.peaks[0].area = 0.0;
  copy.evals.clear();
  EXPECT_EQ(s, SampleSpectrum());
}

TEST(Spectrum, AssignmentReplacesEverything) {
  Spectrum s = SampleSpectrum();
  s = Spectrum();
  EXPECT_EQ(s, Spectrum());
  s = SampleSpectrum();
  EXPECT_EQ(s, SampleSpectrum());
}

TEST(Spectrum, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<Spectrum>(Bytes(version) + ToBytes(SampleSpectrum()).substr(4), SampleSpectrum()),
              "Unknown Spectrum version.");
}

TEST(Spectrum, RefusesUnknownVersionsOfTheCurveInside) {
  for (const std::uint32_t version : {0u, 3u})
    EXPECT_EQ(ReadFailure<Spectrum>(Bytes(1u, version), SampleSpectrum()), "Unknown Curve version.");
}

TEST(Spectrum, FailureLateInTheStreamLeavesItAsItWas) {
  const std::string bytes = ToBytes(SampleSpectrum());
  EXPECT_NE(ReadFailure<Spectrum>(bytes.substr(0, bytes.size() - 1), SampleSpectrum()), "");
}

TEST(Spectrum, HoldsACurveOfAnOlderVersion) {
  const std::string curve = GoldenBytes("Curve.v1");
  Spectrum expected = SampleSpectrum();
  static_cast<Curve&>(expected) = FromBytes<TestCurve>(curve);
  TestCurve current;
  static_cast<Curve&>(current) = SampleSpectrum();
  const std::string own = ToBytes(SampleSpectrum()).substr(4 + ToBytes(current).size());
  EXPECT_EQ(FromBytes<Spectrum>(Bytes(1u) + curve + own, SampleSpectrum()), expected);
}

TEST(Spectrum, HasNoDumpOfItsOwn) { EXPECT_EQ(DumpOf(SampleSpectrum()), L""); }

TEST(StateSpectrum, IsStateZeroOfNothingByDefault) {
  EXPECT_EQ(StateSpectrum().state, 0u);
  EXPECT_EQ(StateSpectrum().spectrum, nullptr);
}
