#pragma once
// What counts as a peak. Each limit has a flag that says whether it is in use; its value
// is kept also while it is not.

#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>

namespace TslBL {

struct TSLBL_API PeakDetectParams : Record<PeakDetectParams> {
  // The position of a peak: its maximum, or the centroid over the top of the peak.
  enum RetentionTypes : std::uint32_t { PeakTop = 0, CentroidTopPercent = 1 };
  // A sweep from left to right, or candidates taken tallest first.
  enum FindFeatureAlgorithms : std::uint32_t { Sequential = 0, Sorted = 1 };

  bool FullSearch = true;  // search the whole curve, or from SearchStart to SearchEnd
  double SearchStart = 5.0;
  double SearchEnd = 3000.0;
  bool SNInUse = true;
  std::uint32_t SN = 4;         // minimum signal-to-noise ratio
  bool ThresholdInUse = false;  // the curve's threshold
  bool RelAmplInUse = false;
  double RelAmpl = 0.0;  // minimum amplitude, percent of the tallest peak
  bool AbsAreaInUse = false;
  double AbsArea = 0.0;  // minimum area
  bool RelAreaInUse = false;
  double RelArea = 0.0;  // minimum area, percent of the largest peak
  bool FWHMGTInUse = false;
  double FWHMGT = 0.01;  // minimum full width at half maximum, x units
  bool FWHMLTInUse = false;
  double FWHMLT = 0.01;  // maximum full width at half maximum, x units
  bool PeakCntInUse = false;
  std::uint32_t PeakCnt = 1;  // most features to go on with
  double MaxValley = 25.0;    // a valley below this percentage of a peak's height ends it
  RetentionTypes RetentionType = CentroidTopPercent;
  double Retention = 75.0;  // the percentage for CentroidTopPercent, counted from the top
  FindFeatureAlgorithms FindFeatureAlgorithm = Sequential;
  bool Display = true;  // carried for the caller

  // The presets for mass spectra (MS) and for ion currents over time, chromatograms (IC).
  static PeakDetectParams DefaultMS();
  static PeakDetectParams DefaultIC();
  // "Sequential", "Sorted", or "Unknown".
  static std::wstring ToString(FindFeatureAlgorithms algorithm);
};
TSLBL_API void Describe(Archive& ar, PeakDetectParams& p);

}  // namespace TslBL
