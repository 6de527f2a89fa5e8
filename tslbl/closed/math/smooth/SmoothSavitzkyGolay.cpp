#include <tslbl/closed/math/smooth/PolynomialBasis.h>
#include <tslbl/closed/math/smooth/Smoothing.h>
#include <tslbl/closed/math/smooth/SymmetricFilter.h>

#include <cmath>

namespace TslMath {
namespace {

// width * order^2 is what the polynomials cost. The limit is reached at order 40 for the widest window of a
// whole spectrum, far beyond any use, and keeps a mistyped order from halting the instrument.
constexpr double kMaxBasisWork = 1e8;

std::size_t HalfWindow(std::uint32_t width, const SmoothStretch& stretch) {
  return std::min<std::size_t>(width / 2, stretch.WidestHalf());
}

std::size_t AffordableOrder(std::size_t order, std::size_t window) {
  const double most = std::sqrt(kMaxBasisWork / static_cast<double>(window));
  return std::min(order, static_cast<std::size_t>(most));
}

// Windows do not reach over the ends: the outer half windows follow the polynomial of the outermost whole
// window.
void FilterEnds(const double* y, const SmoothStretch& stretch, const PolynomialBasis& basis, std::size_t half,
                double* out) {
  const SmoothStretch left = stretch.LeftEnd(half);
  if (!left.Empty()) {
    const std::vector<double> fit = basis.Fit(y);
    for (std::size_t i = left.first; i < left.last; ++i) out[i] = basis.Value(fit, i);
  }
  const SmoothStretch right = stretch.RightEnd(half);
  if (!right.Empty()) {
    const std::size_t begin = stretch.n - (2 * half + 1);
    const std::vector<double> fit = basis.Fit(y + begin);
    for (std::size_t i = right.first; i < right.last; ++i) out[i] = basis.Value(fit, i - begin);
  }
}

}  // namespace

void SmoothSavitzkyGolay(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end,
                         std::uint32_t width, std::uint32_t order, double* out) {
  const SmoothStretch stretch = SmoothStretch::Clamped(n, start, end);
  if (stretch.Empty()) return;
  const std::size_t half = HalfWindow(width, stretch);
  if (order >= 2 * half) return CopyStretch(y, stretch, out);

  const PolynomialBasis basis(half, AffordableOrder(order, 2 * half + 1));
  const SmoothInput input(y, stretch, out);
  FilterEnds(input.Data(), stretch, basis, half, out);
  FilterSymmetric(input.Data(), stretch.Inside(half), basis.CentreWeights(), out);
}

}  // namespace TslMath
