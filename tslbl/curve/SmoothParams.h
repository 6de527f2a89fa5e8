#pragma once
// How a curve is smoothed.
//
// The window need not have one width over the whole curve: a table of steps gives a width
// for each stretch of the x axis, since the peaks of a mass spectrum widen towards high
// m/z.

#include <tslbl/records/Record.h>
#include <cstdint>
#include <vector>

namespace TslBL {

struct SmoothStep {
  double Value = 5.0;      // x at which the step begins
  std::uint32_t Size = 5;  // window width in points

  bool operator==(const SmoothStep&) const = default;
};

struct TSLBL_API SmoothParams : Record<SmoothParams> {
  enum Algs : std::uint32_t { Mean = 0, Median = 1, SavitzkyGolay = 2, Gaussian = 3 };
  // From one step to the next the width grows bit by bit, or jumps.
  enum StepTransitions : std::uint32_t { Smooth = 0, Staggered = 1 };

  std::uint32_t Passes = 1;  // how many times the whole curve is smoothed
  std::uint32_t Order = 2;   // of the polynomial, for Savitzky-Golay
  Algs Alg = Mean;
  StepTransitions StepTrans = Smooth;
  std::vector<SmoothStep> Steps = {SmoothStep{}};

  // The presets for mass spectra (MS) and for ion currents over time, chromatograms (IC).
  static SmoothParams DefaultMS();
  static SmoothParams DefaultIC();
};
TSLBL_API void Describe(Archive& ar, SmoothParams& p);

}  // namespace TslBL
