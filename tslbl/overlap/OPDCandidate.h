#pragma once
// What is known of a peak on its way through overlap peak deconvolution. Indexes are points of the spectrum.
//
// For the sources of the library; not part of its interface.

#include <cstdint>

namespace TslBL {

// A peak to be fitted: what fitting is given.
struct OPDEstimate {
  std::uint32_t GroupId = 0;
  std::uint32_t DataPeakId = 0;  // index in the peak table
  std::uint32_t StartIdx = 0;    // span of the data peak
  std::uint32_t ApexIdx = 0;     // where the fit starts
  std::uint32_t EndIdx = 0;
  double Baseline = 0.0;  // at the apex
  double Ampl = 0.0;
  double HalfWidth = 0.0;  // in points
};

// A data peak that may be a merge of several, or one of several that run into each other.
struct OPDCandidate : OPDEstimate {
  double Resolution = 0.0;
  double CentroidX = 0.0;  // m/z
  double MaxX = 0.0;       // m/z
  double EndAmpl = 0.0;    // amplitude and baseline at EndIdx
  double EndBaseline = 0.0;
  bool NeedsFit = false;  // it does not look like one clean peak
};

}  // namespace TslBL
