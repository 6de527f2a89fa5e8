// A noise command right behind a baseline command: the same curve as one after the other,
// whether they share a pass or not.
#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/curve/Execute.h>
#include <cmath>

using namespace TslBL;
using namespace tests;

namespace {

TestCurve Ripples() {
  std::vector<double> y;
  for (const double x : Count(3000)) {
    const double peak = (std::fmod(x, 400.0) - 200.0) / 6.0;
    y.push_back(20.0 + 0.003 * x + std::fmod(x * 7.0, 5.0) + 900.0 * std::exp(-peak * peak));
  }
  return CurveOf(y);
}

std::vector<BaselineParams> Baselines() {
  std::vector<BaselineParams> all;
  for (const auto alg : {BaselineParams::LinearFitSD, BaselineParams::VFBaseline, BaselineParams::Adaptive})
    for (const bool automatic : {true, false}) {
      all.emplace_back();
      all.back().Alg = alg;
      all.back().Auto = automatic;
      all.back().ManVal = 3.0;
    }
  return all;
}

std::vector<NoiseParams> Noises() {
  using Auto = NoiseParams::AutoAlgs;
  std::vector<NoiseParams> all;
  for (const auto alg : {Auto::LinearFitSD, Auto::VFNoise, Auto::Dispersion, Auto::Median}) {
    all.emplace_back();
    all.back().AlgAuto = alg;
    all.push_back(all.back());
    all.back().SegSize = 300;
    all.push_back(all.front());
    all.back().AlgAuto = alg;
    all.back().Points = 9;
    all.push_back(all.front());
    all.back().AlgAuto = alg;
    all.back().Width = 2;
  }
  all.emplace_back();
  all.back().Auto = false;
  return all;
}

Outcome InAChain(const std::vector<CurveEval>& evals, Curve& curve) {
  return RunOn([&evals](Curve& c, Changed& changed,
                        std::wstring& error) { return ExecuteCurveEvals(c, evals, changed, error); },
               curve);
}

// The same commands, each by itself.
Outcome OneByOne(const std::vector<CurveEval>& evals, Curve& curve) {
  return RunOn(
      [&evals](Curve& c, Changed& changed, std::wstring& error) {
        for (const CurveEval& eval : evals)
          if (!eval.Execute(c, changed, error)) return false;
        return true;
      },
      curve);
}

void ExpectTheSame(const std::vector<CurveEval>& evals, const TestCurve& curve) {
  TestCurve chained = curve;
  TestCurve single = curve;
  EXPECT_EQ(InAChain(evals, chained), OneByOne(evals, single));
  EXPECT_EQ(chained, single);
}

}  // namespace

TEST(BaselineAndNoise, GiveTheSameAsOneAfterTheOther) {
  const TestCurve curve = Ripples();
  for (const BaselineParams& baseline : Baselines())
    for (const NoiseParams& noise : Noises()) ExpectTheSame({baseline, noise}, curve);
}

TEST(BaselineAndNoise, TheNoiseIsThatOfTheParametersGivenAndNotOfTheCurve) {
  TestCurve curve = Ripples();
  curve.noiseParams.SegSize = 700;
  ExpectTheSame({BaselineParams(), NoiseParams()}, curve);
}

TEST(BaselineAndNoise, WhatStandsBetweenThemKeepsThemApart) {
  ExpectTheSame({BaselineParams(), CurveEval::BaselineSubtract(), NoiseParams()}, Ripples());
  ExpectTheSame({NoiseParams(), BaselineParams()}, Ripples());
  ExpectTheSame({BaselineParams(), BaselineParams(), NoiseParams(), NoiseParams()}, Ripples());
}

TEST(BaselineAndNoise, AFrozenCurveKeepsItsParametersOfNoise) {
  TestCurve curve = Ripples();
  curve.AddStatus(Curve::STATUS_OPD);
  curve.noiseParams.SegSize = 700;
  ExpectTheSame({BaselineParams(), NoiseParams()}, curve);
}

TEST(BaselineAndNoise, AnAxisTooShortForTheNoiseLeavesTheBaseline) {
  TestCurve curve = Ripples();
  curve.xAxis.pop_back();
  curve.noise = {1.0, 2.0};
  NoiseParams noise;
  noise.AlgAuto = NoiseParams::AutoAlgs::Dispersion;
  ExpectTheSame({BaselineParams(), noise}, curve);
  InAChain({BaselineParams(), noise}, curve);
  EXPECT_EQ(curve.baseline.size(), curve.yAxis.size());
  EXPECT_EQ(curve.noise, (std::vector<double>{1.0, 2.0}));
}

TEST(BaselineAndNoise, InOnePassNeedNoXForEachPoint) {
  TestCurve curve = Ripples();
  curve.xAxis.pop_back();
  ExpectTheSame({BaselineParams(), NoiseParams()}, curve);
  EXPECT_EQ(InAChain({BaselineParams(), NoiseParams()}, curve), Success("baseline noise"));
}

TEST(BaselineAndNoise, ACascadeGivesTheSameAsItsSteps) {
  TestCurve cascade = Ripples();
  TestCurve steps = cascade;
  RunOn(ExecutePeakDetect, cascade);
  OneByOne({cascade.baselineParams, cascade.noiseParams, cascade.peakDetectParams}, steps);
  EXPECT_EQ(cascade, steps);
  RunOn(ExecuteSmooth, cascade);
  OneByOne({cascade.smoothParams, cascade.baselineParams, cascade.noiseParams, cascade.peakDetectParams},
           steps);
  EXPECT_EQ(cascade, steps);
}
