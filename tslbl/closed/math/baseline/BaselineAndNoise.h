#pragma once
// Baseline and noise of a curve in one pass: for the linear fit and V-F exactly the results of Baseline.h and
// Noise.h, at half the cost of both.
//
// Parameters, ends and limits: see Baseline.h; the methods under their names in docs/numerics.md.
#include <tslbl/Export.h>

#include <cstdint>

namespace TslMath {

// Where the results go: n values each, or null for one of them that is not wanted. Neither may be y.
struct BaselineAndNoise {
  double* baseline;
  double* noise;
};

// Linear fit: LinearFitSDBaseline and LinearFitSDNoise.
TSLBL_API void FitLinesSD(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t points,
                          std::uint32_t width, const BaselineAndNoise& out);

// V-F: VFBaseline and VFNoise.
TSLBL_API void FollowValleys(const double* y, std::uint32_t n, std::uint32_t segSize,
                             const BaselineAndNoise& out);

// Adaptive, with the noise about it, as the opening and the kernel give it: APBMorph and APBNoise correct it
// where counted ions are few.
TSLBL_API void OpenAdaptively(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t window,
                              const BaselineAndNoise& out);

}  // namespace TslMath
