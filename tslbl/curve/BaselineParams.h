#pragma once
// How the baseline of a curve is found: the amplitude that counts as no signal.

#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API BaselineParams : Record<BaselineParams> {
  enum Algs : std::uint32_t { VFBaseline = 0, Adaptive = 1, LinearFitSD = 2 };

  bool Auto = true;  // compute the baseline, or take ManVal
  Algs Alg = LinearFitSD;
  std::uint32_t SegSize = 250;  // segment, points; all algorithms
  std::uint32_t Window = 100;   // points; Adaptive
  std::uint32_t Points = 5;     // length of the running mean, points; LinearFitSD
  std::uint32_t Width = 3;      // rejection limit, standard deviations; LinearFitSD
  double ManVal = 0.0;          // the constant baseline

  // The presets for mass spectra (MS) and for ion currents over time, chromatograms (IC).
  static BaselineParams DefaultMS();
  static BaselineParams DefaultIC();
};
TSLBL_API void Describe(Archive& ar, BaselineParams& p);

}  // namespace TslBL
