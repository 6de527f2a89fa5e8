#pragma once
// Noise of which only what exceeds a threshold is left, as instruments with Fourier transforms store it.
#include <tslbl/closed/math/baseline/Polyline.h>

#include <vector>

namespace TslMath {

struct NoiseThreshold {
  // What all noise that is left exceeds, along the curve; empty if the bumps are no such noise.
  std::vector<Knot> levels;
  // Whether there is an edge below which there is little, and above it all of noise.
  bool hasEdge = false;

  double Least() const;  // 0 if there is none
};

// From the bumps of a curve, positions in points, ascending. Where all together show no threshold it may
// change along the curve: eight parts of at least 64 bumps are judged then, and most of them must agree.
// Nothing for fewer than 32 bumps. Ions that are equally high make no edge. O(n log n).
NoiseThreshold FindNoiseThreshold(const std::vector<Knot>& bumps);

}  // namespace TslMath
