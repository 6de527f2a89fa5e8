#pragma once
// How the noise of a curve is found: per point by an algorithm, or as one number measured
// on a stretch that the user knows to be free of peaks.

#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API NoiseParams : Record<NoiseParams> {
  enum class AutoAlgs : std::uint32_t { VFNoise = 0, Dispersion = 1, Median = 2, LinearFitSD = 3 };
  enum class ManAlgs : std::uint32_t { PeakToPeak = 0, SixTimesSD = 1 };

  bool Auto = true;
  AutoAlgs AlgAuto = AutoAlgs::LinearFitSD;
  std::uint32_t SegSize = 250;  // segment, points
  std::uint32_t Median = 0;     // segments of the running median; algorithm Median
  std::uint32_t Points = 5;     // length of the running mean, points; LinearFitSD
  std::uint32_t Width = 3;      // rejection limit, standard deviations; LinearFitSD
  ManAlgs AlgMan = ManAlgs::PeakToPeak;
  double Start = 5.0;  // the manual stretch, x units
  double End = 3000.0;

  static NoiseParams DefaultMS();
  static NoiseParams DefaultIC();
};
TSLBL_API void Describe(Archive& ar, NoiseParams& p);

}  // namespace TslBL
