// Commands whose parameters only a class derived from Curve has a place for.
#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/curve/EvalImpl.h>
#include <tslbl/records/OPDParams.h>

using namespace TslBL;
using namespace tests;

namespace {

struct Derived : TestCurve {
  OPDParams opdParams;
};

bool StoreInDerived(Curve& curve, const OPDParams& params) {
  auto* derived = dynamic_cast<Derived*>(&curve);
  if (derived == nullptr) return false;
  derived->opdParams = params;
  return true;
}

// Runs the threshold step, whose success a history tells, with parameters of the derived class.
using OnDerived = EvalOf<EvalType::Threshold, OPDParams, StoreInDerived>;

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
  Derived curve;
  EXPECT_EQ(RunImpl(OnDerived(Params()), curve), Success("threshold"));
  EXPECT_EQ(curve.opdParams, Params());
  EXPECT_EQ(History(curve), "Threshold");
}

TEST(EvalOf, FailsWithoutAMessageOnACurveThatHasNoPlaceForItsParameters) {
  TestCurve curve = CurveOf("0 1 5");
  const TestCurve before = curve;
  EXPECT_EQ(RunImpl(OnDerived(Params()), curve), Failure(L""));
  EXPECT_EQ(curve, before);
}

TEST(EvalOf, StoresItsParametersThoughTheStepFails) {
  Derived curve;
  curve.AddStatus(Curve::STATUS_OPD);
  EXPECT_EQ(RunImpl(OnDerived(Params()), curve), Failure(L"Unable to threshold."));
  EXPECT_EQ(curve.opdParams, Params());
}

TEST(EvalOf, StoresParametersInTheMemberOfCurveUnlessToldOtherwise) {
  TestCurve curve;
  ThresholdParams params;
  params.Value = 3.0;
  EXPECT_TRUE((EvalOf<EvalType::Threshold, ThresholdParams>(params).StoreParams(curve)));
  EXPECT_EQ(curve.thresholdParams, params);
}
