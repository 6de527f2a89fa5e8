#pragma once
// Parameters of overlap peak deconvolution: which peaks are taken for merges of several
// ions, and how they are fitted.
//
// Element "OPD"; the ranges are its list "Ranges" of elements "Range" with attributes.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// A window of m/z to look at.
struct OPDRange {
  bool Enable = true;
  double LowMZ = 5.0;
  double HighMZ = 3000.0;

  bool operator==(const OPDRange&) const = default;
};

struct TSLBL_API OPDParams : Record<OPDParams> {
  enum FittingFuncs : std::uint32_t { MarquardtLevenberg = 0, HookeJeeves = 1 };

  // The preset for mass spectra, which is that of the constructor.
  static OPDParams DefaultMS() { return {}; }

  bool FullRange = true;         // look at the whole spectrum
  std::vector<OPDRange> Ranges;  // where to look otherwise
  // Height of a common end point, in percent of the lower peak, from which two peaks count
  // as joined.
  std::uint32_t MinAmplPercentCmnEndPt = 50;
  std::uint32_t ResolutionThreshold = 1500;  // a peak of lower resolution is fitted
  double MinDeltaCentroidPkMax = 0.2;        // m/z from centroid to maximum at which a peak is fitted
  std::uint32_t NumSmoothPts = 3;            // for the engine's initial estimates
  std::uint32_t MinPeakAmplitude = 10;       // estimates on a lower amplitude are dropped
  std::uint32_t MaxPeaks = 10;               // most peaks in a group
  FittingFuncs FittingFunc = MarquardtLevenberg;
  bool ViewResults = true;   // for the caller
  bool SingleGroup = false;  // all estimates go into one group
};

TSLBL_API void Describe(Archive& ar, OPDParams& params);

}  // namespace TslBL
