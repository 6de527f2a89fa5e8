// Commands whose parameters only a class derived from Curve has a place for.
#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/curve/EvalImpl.h>
#include <tslbl/spectrum/Spectrum.h>

using namespace TslBL;
using namespace tests;

namespace {

bool StoreInSpectrum(Curve& curve, const OPDParams& params) {
  auto* spectrum = dynamic_cast<Spectrum*>(&curve);
  if (spectrum == nullptr) return false;
  spectrum->opdParams = params;
  return true;
}

// Runs the threshold step, whose success a history tells, with parameters of a spectrum.
using OnSpectra = EvalOf<EvalType::Threshold, OPDParams, StoreInSpectrum>;

OPDParams Params() {
  OPDParams params;
  params.MaxPeaks = 7;
  return params;
}

Outcome RunImpl(const CurveEval::EvalImpl& command, Curve& curve) {
  return RunOn(
      [&](Curve& c, Changed& changed, std::wstring& error) { return command.Execute(c, changed, error); },
      curve);
}

}  // namespace

TEST(EvalOf, StoresItsParametersWhereItsOwnFunctionSays) {
  Spectrum spectrum;
  EXPECT_EQ(RunImpl(OnSpectra(Params()), spectrum), Success("threshold"));
  EXPECT_EQ(spectrum.opdParams, Params());
  EXPECT_EQ(History(spectrum), "Threshold");
}

TEST(EvalOf, FailsWithoutAMessageOnACurveThatHasNoPlaceForItsParameters) {
  TestCurve curve = CurveOf("0 1 5");
  const TestCurve before = curve;
  EXPECT_EQ(RunImpl(OnSpectra(Params()), curve), Failure(L""));
  EXPECT_EQ(curve, before);
}

TEST(EvalOf, StoresItsParametersThoughTheStepFails) {
  Spectrum spectrum;
  spectrum.AddStatus(Curve::STATUS_OPD);
  EXPECT_EQ(RunImpl(OnSpectra(Params()), spectrum), Failure(L"Unable to threshold."));
  EXPECT_EQ(spectrum.opdParams, Params());
}

TEST(EvalOf, StoresParametersInTheMemberOfCurveUnlessToldOtherwise) {
  TestCurve curve;
  ThresholdParams params;
  params.Value = 3.0;
  EXPECT_TRUE((EvalOf<EvalType::Threshold, ThresholdParams>(params).StoreParams(curve)));
  EXPECT_EQ(curve.thresholdParams, params);
}
