#pragma once
// A spectrum with something in every field, and the changes of each for CheckRecord.

#include <curve/SampleCurve.h>
#include <tslbl/spectrum/Spectrum.h>
#include <vector>

namespace tests {

inline TslBL::OverlapPeakInfo SampleFit() {
  TslBL::OverlapPeakInfo fit;
  fit.GroupId = 1;
  fit.Position = 1.75;
  fit.Height = 9.5;
  return fit;
}

inline void FillSpectrum(TslBL::Spectrum& s) {
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
}

// Of the fields that a record derived from Spectrum has from it.
template <class R>
std::vector<FieldChange<R>> SpectrumRows() {
  std::vector<FieldChange<R>> rows = CurveRows<R>();
  rows.insert(rows.end(), {
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
  return rows;
}

}  // namespace tests
