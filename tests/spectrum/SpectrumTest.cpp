#include <RecordCheck.h>

#include <curve/TestCurve.h>
#include <spectrum/FullSpectrum.h>
#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/spectrum/StateSpectrum.h>
#include <memory>

using namespace TslBL;
using namespace tests;

namespace {

Spectrum SampleSpectrum() {
  Spectrum s;
  FillSpectrum(s);
  return s;
}

}  // namespace

TEST(AllRecords, Spectrum) { CheckRecord<Spectrum>(SpectrumRows<Spectrum>()); }
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
