#pragma once
// Records of a ramp with a value of its own in every field.

#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>
#include <tslbl/tune/ramp/RampMethod.h>
#include <tune/Samples.h>

namespace tests {

inline RampLens SampleRampLens() {
  RampLens lens;
  lens.Field = TuneField::CapExit;
  lens.Start = 100.0;
  lens.End = 200.5;
  lens.Step = 2.5;
  return lens;
}

inline RampStep SampleRampStep() {
  RampStep step;
  step.Lenses = {SampleRampLens(), RampLens()};
  step.Records = 4294967295;
  return step;
}

inline RampAlgorithmParams SampleRampAlgorithmParams() {
  RampAlgorithmParams params;
  params.Type = RampAlgorithmParams::AmplitudeAtResolution;
  params.Percent = 15;
  return params;
}

inline RampMethod SampleRampMethod() {
  RampMethod method;
  method.BaseTune = SampleTune();
  method.Steps = {SampleRampStep(), RampStep()};
  method.Evals = {CurveEval(SmoothParams())};
  method.PeakFields = {MZPeakField::Res, MZPeakField::Ampl};
  MZRange range;
  range.Type = MZRange::Partial;
  range.Start = 115.5;
  range.End = 120.25;
  method.MZRanges = {range};
  method.RangeEvals = {CurveEval(ThresholdParams()), CurveEval()};
  method.Params = SampleRampAlgorithmParams();
  return method;
}

}  // namespace tests
