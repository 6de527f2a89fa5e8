#pragma once
// Records of a method with a value of its own in every field.

#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>
#include <tslbl/method/DDEvent.h>
#include <tslbl/method/Method.h>
#include <tune/Samples.h>

namespace tests {

inline DDFilter SampleDDFilter() { return {499.5, 500.25, 1000, 4294967295}; }

inline DDInfo SampleDDInfo() {
  DDInfo info;
  info.Type = DDInfo::PeakPark;
  info.StartTrigger = DDInfo::SNAboveThres;
  info.StartTriggerValue = 12.5;
  info.CurveEvals = {CurveEval(ThresholdParams()), CurveEval(CurveEval::AerosolFilter())};
  info.EndTrigger = DDInfo::TriggerTimeout;
  info.EndTriggerValue = 30.25;
  info.ExclDuration = 90000;
  return info;
}

inline TuneRun SampleTuneRun(std::uint32_t tuneId = 3) {
  TuneRun run(tuneId, 1, SampleDDInfo());
  run.SettleDelay = 500000;
  return run;
}

inline TimePeriod SampleTimePeriod() {
  TimePeriod period;
  period.Save = false;
  period.Loops = 20;
  period.Timeout = 60000;
  period.SettleDelay = 500000;
  period.Sequence = {{1}, {2, 4}, {3}};
  return period;
}

inline DiverterValveMethod SampleValveMethod() {
  DiverterValveMethod program;
  program.AddState(timebase::MSEC(0), DiverterValve(DiverterValve::kToWaste));
  program.AddState(timebase::MSEC(90000), DiverterValve(DiverterValve::kToSource));
  return program;
}

inline Method SampleMethod() {
  Method method;
  method.Desc = L"\u00DCber Nacht";
  method.Tunes = {{1, SampleTune()}, {4294967295, Tune()}};
  method.TuneRuns = {{2, SampleTuneRun(1)}, {7, TuneRun(4294967295, 1)}};
  method.TimePeriods = {SampleTimePeriod(), TimePeriod()};
  method.Exclusions = {SampleDDFilter()};
  method.Inclusions = {DDFilter(), SampleDDFilter()};
  method.ValveMethod = SampleValveMethod();
  return method;
}

inline DDEvent SampleDDEvent() { return {DDEvent::Stop, 61000, 123, {500.25, 1000.5}}; }

}  // namespace tests
