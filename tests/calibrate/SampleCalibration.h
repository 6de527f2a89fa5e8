#pragma once
// Spectra to calibrate.

#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>
#include <vector>

namespace tests {

// A peak of a table that a test writes by hand: it spans two points to each side.
struct TablePeak {
  double point;  // where its centroid lies, a point of the spectrum
  double ampl;
};

// 1001 points from m/z 100 to 200, ten DAC steps to a point and a hundred to an m/z, and a table of peaks.
inline TslBL::Spectrum SpectrumToCalibrate(const std::vector<TablePeak>& peaks) {
  TslBL::Spectrum s;
  s.tuneMZCalPts = s.appliedMZCalPts = {{L"low", 0.0, 0.0}, {L"high", 1000.0, 100000.0}};
  s.startMDAC = 10000.0;
  s.stepMDAC = 10.0;
  s.yAxis.assign(1001, 1.0);
  s.AddStatus(TslBL::Curve::STATUS_Y);
  TslBL::MZAssign(s);
  for (const TablePeak& peak : peaks) {
    TslBL::PeakInfo row;
    row.centroidIdx = peak.point;
    row.apexIdx = static_cast<std::uint32_t>(peak.point);
    row.startIdx = row.apexIdx - 2;
    row.endIdx = row.apexIdx + 2;
    row.maxAmpl = peak.ampl;
    s.peaks.push_back(row);
  }
  return s;
}

}  // namespace tests
