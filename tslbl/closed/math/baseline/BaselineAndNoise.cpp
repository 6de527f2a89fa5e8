// The linear fit, which is the kernel on the curve itself, and each method's baseline and noise alone.
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>

#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BackgroundKernel.h>
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/baseline/ShotBackground.h>

namespace TslMath {

void FitLinesSD(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t points,
                std::uint32_t width, const BaselineAndNoise& out) {
  const double quantum = SmallestStep(y, n);
  if (IsFlat(y, n, quantum)) return DrawFlat(y, n, quantum, out);
  FitBackground(y, nullptr, n, quantum, {segSize, points, width}, out);
  TakeShotBackground(y, n, segSize, quantum, out);
}

void VFBaseline(const double* y, std::uint32_t n, std::uint32_t segSize, double* out) {
  FollowValleys(y, n, segSize, {out, nullptr});
}

void VFNoise(const double* y, std::uint32_t n, std::uint32_t segSize, double* out) {
  FollowValleys(y, n, segSize, {nullptr, out});
}

void APBMorph(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t window, double* out) {
  OpenAdaptively(y, n, segSize, window, {out, nullptr});
  TakeShotBackground(y, n, segSize, SmallestStep(y, n), {out, nullptr});
}

void LinearFitSDBaseline(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t points,
                         std::uint32_t width, double* out) {
  FitLinesSD(y, n, segSize, points, width, {out, nullptr});
}

void LinearFitSDNoise(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t points,
                      std::uint32_t width, double* out) {
  FitLinesSD(y, n, segSize, points, width, {nullptr, out});
}

}  // namespace TslMath
