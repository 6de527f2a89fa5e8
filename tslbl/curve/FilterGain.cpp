#include <tslbl/curve/FilterGain.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <stdexcept>

namespace TslBL {
namespace {

// From row to row of the table a peak before the filter narrows by this factor.
constexpr double kRatio = 1.04;
// Points over which the filter averages; there it takes less than 3e-4.
constexpr double kWidest = 32.0;
constexpr double kNarrowest = 2.0;  // points
// A little less than the tenth of the header, as rows are apart.
constexpr double kLeastShare = 0.08;
constexpr int kHalvings = 24;

// A Gaussian peak in the middle, seen through the filter.
class FilteredPeak {
 public:
  FilteredPeak(std::span<const double> weights, double width)
      : weights_(weights), fall_(4.0 * std::numbers::ln2 / (width * width)), width_(width) {}

  double At(double place) const {
    const std::size_t middle = weights_.size() / 2;
    double sum = 0.0;
    for (std::size_t k = 0; k < weights_.size(); ++k) {
      const double distance = place - static_cast<double>(k) + static_cast<double>(middle);
      sum += weights_[k] * std::exp(-fall_ * distance * distance);
    }
    return sum;
  }

  double Width() const {
    const double half = 0.5 * At(0.0);
    double inside = 0.0;
    double outside = 0.5 * width_;
    for (; At(outside) > half; outside *= 1.25) inside = outside;
    for (int k = 0; k < kHalvings; ++k) {
      const double middle = 0.5 * (inside + outside);
      (At(middle) > half ? inside : outside) = middle;
    }
    return inside + outside;
  }

 private:
  std::span<const double> weights_;
  double fall_;
  double width_;
};

}  // namespace

FilterGain::FilterGain(std::span<const double> weights) {
  if (weights.size() % 2 == 0) throw std::invalid_argument("A filter has an odd number of weights.");
  const double averaged = 1.0 / std::inner_product(weights.begin(), weights.end(), weights.begin(), 0.0);
  const double leastStep = std::pow(kRatio, kLeastShare);
  for (double width = kWidest * averaged; width * kRatio > kNarrowest; width /= kRatio) {
    const FilteredPeak peak(weights, width);
    const double behind = peak.Width();
    if (!widths_.empty() && behind * leastStep > widths_.back()) break;
    widths_.push_back(behind);
    gains_.push_back(peak.At(0.0));
    shares_.push_back(width / behind);
  }
  std::ranges::reverse(widths_);
  std::ranges::reverse(gains_);
  std::ranges::reverse(shares_);
}

double FilterGain::Of(double width) const { return Between(gains_, width); }

double FilterGain::WidthBefore(double width) const {
  if (!(width > widths_.front())) return std::min(width, widths_.front() * shares_.front());
  return width * Between(shares_, width);
}

double FilterGain::Between(const std::vector<double>& figures, double width) const {
  if (!(width > widths_.front())) return figures.front();
  const auto above = std::ranges::lower_bound(widths_, width);
  if (above == widths_.end()) return 1.0;
  const auto i = static_cast<std::size_t>(above - widths_.begin());
  const double share = (width - widths_[i - 1]) / (widths_[i] - widths_[i - 1]);
  return figures[i - 1] + share * (figures[i] - figures[i - 1]);
}

}  // namespace TslBL
