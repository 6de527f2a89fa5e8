#pragma once
// The kernel under all baselines and noises: a curve's background from robust straight lines.
//
// The curve is cut into segments. Each gets the line and the standard deviation of its background (see
// RobustLine.h). Segments without enough background, or filled by a peak (see SegmentGuard.h), are left out;
// the others are blended from centre to centre, so the result is continuous, exact for a straight line and of
// second order for a curved one. Across left-out segments the levels are joined by a straight line.
//
// Sources: W. Dietrich, C. Ruedel, M. Neumann, Fast and precise automatic baseline correction of one- and
// two-dimensional NMR spectra, 1991; S. Golotvin, A. Williams, Improved baseline recognition and modeling of
// FT NMR spectra, 2000 (background points by their standard deviation).
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>

#include <cstdint>

namespace TslMath {

struct BackgroundSettings {
  std::uint32_t segSize;
  std::uint32_t points;
  std::uint32_t width;
};

// The settings that refine a shape found by other means.
constexpr std::uint32_t kRefiningSegment = 250;
constexpr std::uint32_t kRefiningPoints = 5;
constexpr std::uint32_t kRefiningWidth = 3;

// Whether a curve leaves nothing to fit: it has up to two points, or all are equal. `quantum` is the smallest
// step of the data (see SmallestStep.h).
bool IsFlat(const double* y, std::uint32_t n, double quantum);

// The least value is the baseline of a flat curve, half the quantum its noise.
void DrawFlat(const double* y, std::uint32_t n, double quantum, const BaselineAndNoise& out);

// Fits y - shape and adds the shape to the baseline again. A shape that runs along the bottom of the data is
// too low by a part of the noise; so it loses this bias and keeps its form. `shape` has n values, or is null
// for none; it may be the output for the baseline or, if that is null, for the noise. Settings may have any
// values, see Baseline.h.
void FitBackground(const double* y, const double* shape, std::uint32_t n, double quantum,
                   const BackgroundSettings& settings, const BaselineAndNoise& out);

}  // namespace TslMath
