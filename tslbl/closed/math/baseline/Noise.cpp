#include <tslbl/closed/math/baseline/Noise.h>

#include <tslbl/closed/math/baseline/BaselineAndNoise.h>

namespace TslMath {

void VFNoise(const double* y, std::uint32_t n, std::uint32_t segSize, double* out) {
  FollowValleys(y, n, segSize, {nullptr, out});
}

void LinearFitSDNoise(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t points,
                      std::uint32_t width, double* out) {
  FitLinesSD(y, n, segSize, points, width, {nullptr, out});
}

}  // namespace TslMath
