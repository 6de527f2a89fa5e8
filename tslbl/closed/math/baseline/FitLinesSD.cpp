// Linear fit: the kernel on the curve itself.
#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BackgroundKernel.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/closed/math/baseline/ShotBackground.h>

namespace TslMath {

void FitLinesSD(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t points,
                std::uint32_t width, const BaselineAndNoise& out) {
  const double quantum = SmallestStep(y, n);
  if (IsFlat(y, n, quantum)) return DrawFlat(y, n, quantum, out);
  FitBackground(y, nullptr, n, quantum, {segSize, points, width}, out);
  TakeShotBackground(y, n, segSize, quantum, out);
}

}  // namespace TslMath
