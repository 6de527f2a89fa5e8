#include <tslbl/closed/math/peak/PairCorrelation.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <vector>

namespace TslMath {
namespace {

constexpr std::ptrdiff_t kAround = 1024;  // points to each side of one that are its background
constexpr std::uint32_t kShortest = 2 * kAround;
constexpr std::size_t kAlikeNoise = 512;  // points whose noise is alike
// Widths that are tried.
constexpr double kFirstWidth = 2.0;
constexpr double kLastWidth = 120.0;
constexpr double kNextWidth = 1.03;
constexpr double kCertain = 8.0;  // standard deviations
// Of the best fit: the first as good as this is that of the peaks, a wider one that of their groups.
constexpr double kAsGood = 0.6;
constexpr double kWidthOfSigma = 2.3548200450309493;

std::vector<double> WithoutBackground(const double* y, std::uint32_t n) {
  std::vector<double> sums(n + std::size_t{1}, 0.0);
  std::partial_sum(y, y + n, sums.begin() + 1);
  std::vector<double> above(n);
  for (std::ptrdiff_t i = 0; i < std::ssize(above); ++i) {
    const std::ptrdiff_t from = std::max<std::ptrdiff_t>(i - kAround, 0);
    const std::ptrdiff_t to = std::min(i + kAround + 1, std::ssize(above));
    const auto size = static_cast<double>(to - from);
    above[static_cast<std::size_t>(i)] =
        y[i] - (sums[static_cast<std::size_t>(to)] - sums[static_cast<std::size_t>(from)]) / size;
  }
  return above;
}

// The noise of products in blocks: where it is large, both factors are.
double VarianceOfProducts(std::span<const double> above) {
  double variance = 0.0;
  for (std::size_t from = 0; from < above.size(); from += kAlikeNoise) {
    const auto block = above.subspan(from, std::min(kAlikeNoise, above.size() - from));
    const double squares = std::inner_product(block.begin(), block.end(), block.begin(), 0.0);
    variance += squares * squares / static_cast<double>(block.size());
  }
  return variance;
}

// How far the correlation of peaks so wide, up to a constant, stands out of the sums; over the standard
// deviation of a sum.
double Likeness(std::span<const double> sums, double width) {
  std::vector<double> shape(sums.size());
  const double sigma = width / kWidthOfSigma;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    const double apart = static_cast<double>(i + 1) / (2.0 * sigma);
    shape[i] = std::exp(-apart * apart);
  }
  const double mean = std::reduce(shape.begin(), shape.end()) / static_cast<double>(shape.size());
  double product = 0.0;
  double squares = 0.0;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    const double centered = shape[i] - mean;
    product += centered * sums[i];
    squares += centered * centered;
  }
  return product / std::sqrt(squares);
}

}  // namespace

void PairCorrelation::Add(const double* y, std::uint32_t n) {
  if (n < kShortest) return;
  const std::vector<double> above = WithoutBackground(y, n);
  for (std::size_t i = 0; i + 1 < above.size(); ++i) {
    const double factor = above[i];
    const double* next = above.data() + i + 1;
    const std::size_t lags = std::min(sums_.size(), above.size() - i - 1);
    for (std::size_t lag = 0; lag < lags; ++lag) sums_[lag] += factor * next[lag];
  }
  variance_ += VarianceOfProducts(above);
}

double PairCorrelation::Width() const {
  std::vector<double> widths;
  std::vector<double> likeness;
  for (double width = kFirstWidth; width <= kLastWidth; width *= kNextWidth) {
    widths.push_back(width);
    likeness.push_back(Likeness(sums_, width));
  }
  const double best = std::ranges::max(likeness);
  if (!(best > kCertain * std::sqrt(variance_))) return 0.0;
  std::size_t k = 0;
  while (likeness[k] < kAsGood * best) ++k;
  while (k + 1 < likeness.size() && likeness[k + 1] > likeness[k]) ++k;
  return k == 0 || k + 1 == widths.size() ? 0.0 : widths[k];
}

}  // namespace TslMath
