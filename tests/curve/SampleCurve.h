#pragma once
// A curve with something in every field, and the changes of each for CheckRecord.

#include <RecordCheck.h>

#include <tslbl/curve/Curve.h>
#include <vector>

namespace tests {

inline TslBL::PeakInfo SamplePeak() {
  using TslBL::PeakInfo;
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

inline void FillCurve(TslBL::Curve& c) {
  using TslBL::CurveEval;
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

// Of the fields that a record derived from Curve has from it.
template <class R>
std::vector<FieldChange<R>> CurveRows() {
  using TslBL::Curve;
  return {
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
  };
}

}  // namespace tests
