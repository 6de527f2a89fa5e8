#include <tslbl/closed/math/peak/GaussPeak.h>
#include <tslbl/closed/math/smooth/Smoothing.h>
#include <tslbl/closed/math/smooth/SymmetricFilter.h>

#include <cmath>

namespace TslMath {
namespace {

// Beyond this many sigma less than 1e-5 of the kernel's area is left.
constexpr double kKernelReach = 4.5;

std::size_t KernelHalf(double sigma, const SmoothStretch& stretch) {
  const auto half = static_cast<std::size_t>(std::ceil(kKernelReach * sigma));
  return std::min(half, stretch.WidestHalf());
}

std::vector<double> GaussianValues(double sigma, std::size_t half) {
  std::vector<double> value(half + 1);
  for (std::size_t j = 0; j <= half; ++j) {
    const double u = static_cast<double>(j) / sigma;
    value[j] = std::exp(-0.5 * u * u);
  }
  return value;
}

// Element h is the sum of the kernel over -h .. h.
std::vector<double> SumsOverHalves(const std::vector<double>& value) {
  std::vector<double> sum(value.size());
  sum[0] = value[0];
  for (std::size_t h = 1; h < value.size(); ++h) sum[h] = sum[h - 1] + 2 * value[h];
  return sum;
}

void FilterEnd(const double* y, const SmoothStretch& end, const std::vector<double>& value,
               const std::vector<double>& sum, double* out) {
  FilterSymmetric(y, end, value, out);
  for (std::size_t i = end.first; i < end.last; ++i) out[i] /= sum[end.HalfAt(i, value.size() - 1)];
}

}  // namespace

void SmoothGaussian(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end,
                    std::uint32_t width, double* out) {
  const SmoothStretch stretch = SmoothStretch::Clamped(n, start, end);
  if (stretch.Empty()) return;
  if (width <= 1) return CopyStretch(y, stretch, out);

  const double sigma = GaussPeak::FWHM_to_A3(width);
  const std::size_t half = KernelHalf(sigma, stretch);
  std::vector<double> kernel = GaussianValues(sigma, half);
  const std::vector<double> sum = SumsOverHalves(kernel);
  const SmoothInput input(y, stretch, out);
  FilterEnd(input.Data(), stretch.LeftEnd(half), kernel, sum, out);
  FilterEnd(input.Data(), stretch.RightEnd(half), kernel, sum, out);
  for (double& value : kernel) value /= sum[half];
  FilterSymmetric(input.Data(), stretch.Inside(half), kernel, out);
}

}  // namespace TslMath
