#pragma once
// A spectrum to deconvolve: points at m/z 100, 101 ..., and four data peaks of ten points each that begin at
// 0, 10, 20 and 30.

#include <chargestate/SampleSeries.h>
#include <spectrum/SampleSpectrum.h>

namespace tests {

inline DeconSpectrum SpectrumToDecon() {
  DeconSpectrum s(SpectrumWithPeaks(4));
  for (std::uint32_t i = 0; i < 4; ++i) {
    PeakInfo& row = s.peaks[i];
    row.maxIdx = row.apexIdx;
    row.centroidIdx = row.apexIdx + 0.5;
    row.maxAmpl = 51.0 + i;
    row.centroidAmpl = 41.0 + i;
    row.area = 300.5 + i;
    row.noiseAmpl = 2.0;
    row.baselineAmpl = row.maxBaseline = 1.0;
    row.halfHeightLeftIdx = row.apexIdx - 1.0;
    row.halfHeightRightIdx = row.apexIdx + 1.0;
    s.yAxis[row.apexIdx] = row.maxAmpl;
  }
  s.largestAreaIdx = s.largestMaxIdx = s.largestCentroidIdx = 3;
  s.AddStatus(Curve::STATUS_PEAKS);
  return s;
}

// The same, of which the second and third peak are a group of three overlap peaks at points 14, 17 and 24.
inline DeconSpectrum WithOverlapPeaks() {
  DeconSpectrum s = SpectrumToDecon();
  s.overlapPeaks = Fits("1:1@14 1:1@17 1:2@24");
  for (OverlapPeakInfo& fit : s.overlapPeaks) {
    fit.Height = 20.0;
    fit.FWHM = 2.0;
    fit.Baseline = 1.0;
  }
  s.SyncOverlapGroups();
  return s;
}

}  // namespace tests
