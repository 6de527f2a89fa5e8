#include <tslbl/closed/math/baseline/Baseline.h>

#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/closed/math/baseline/ShotBackground.h>

namespace TslMath {

void VFBaseline(const double* y, std::uint32_t n, std::uint32_t segSize, double* out) {
  FollowValleys(y, n, segSize, {out, nullptr});
}

void APBMorph(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t window, double* out) {
  OpenAdaptively(y, n, segSize, window, {out, nullptr});
  TakeShotBackground(y, n, segSize, SmallestStep(y, n), {out, nullptr});
}

void LinearFitSDBaseline(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t points,
                         std::uint32_t width, double* out) {
  FitLinesSD(y, n, segSize, points, width, {out, nullptr});
}

}  // namespace TslMath
