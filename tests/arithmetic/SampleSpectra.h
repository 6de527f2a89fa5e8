#pragma once
// Spectra of acquisition states for the tests.

#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/spectrum/Spectrum.h>
#include <memory>
#include <vector>

namespace tests {

// A tenth of an m/z is a DAC step, from m/z `from` on.
inline std::vector<TslBL::MZCalPt> TenthsFrom(double from, double to) {
  return {{L"low", from, from * 10.0}, {L"high", to, to * 10.0}};
}

// Points from m/z `from`, `step` DAC steps apart, on that calibration.
inline TslBL::Spectrum StateSpectrumOf(double from, double step, const std::vector<double>& y,
                                       const std::vector<TslBL::MZCalPt>& points = TenthsFrom(0.0, 1000.0)) {
  TslBL::Spectrum s;
  s.tuneMZCalPts = s.appliedMZCalPts = points;
  s.startMDAC = from * 10.0;
  s.stepMDAC = step;
  s.yAxis = y;
  TslBL::MZAssign(s);
  s.AddStatus(TslBL::Curve::STATUS_Y);
  return s;
}

}  // namespace tests
