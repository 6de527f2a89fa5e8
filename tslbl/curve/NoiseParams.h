#pragma once
// How the noise of a curve is found: per point by an algorithm, or as one number measured
// on a stretch that the user knows to be free of peaks.
//
// PeakToPeak is the largest minus the smallest amplitude of the stretch. Amplitudes that are
// NaN are passed over; where there are no others the noise is NaN. SixTimesSD is six times the
// standard deviation of the stretch, and NaN if one of its amplitudes is not finite.
//
// Dispersion and Median look for gaps in the axis, and the stretch is one of the axis where the
// curve has STATUS_X: these need an x for each y. The others read amplitudes alone.

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

  // The presets for mass spectra (MS) and for ion currents over time, chromatograms (IC).
  static NoiseParams DefaultMS();
  static NoiseParams DefaultIC();
};
TSLBL_API void Describe(Archive& ar, NoiseParams& p);

}  // namespace TslBL
