#include <tslbl/curve/FilterGain.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace TslBL {
namespace {

constexpr std::size_t kRows = 96;
constexpr double kNarrowest = 1.0 / 3.0;  // filter widths
constexpr double kWidest = 32.0;
constexpr int kSteps = 12;

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

  // By the secant through the last two places.
  double Width() const {
    const double half = 0.5 * At(0.0);
    double before = 0.45 * width_;
    double place = 0.5 * width_;
    double aboveBefore = At(before) - half;
    for (int step = 0; step < kSteps; ++step) {
      const double above = At(place) - half;
      if (above == aboveBefore) break;
      const double next = place - above * (place - before) / (above - aboveBefore);
      before = place;
      aboveBefore = above;
      place = next;
    }
    return 2.0 * place;
  }

 private:
  std::span<const double> weights_;
  double fall_;
  double width_;
};

}  // namespace

FilterGain::FilterGain(std::span<const double> weights) {
  const auto length = static_cast<double>(weights.size());
  for (std::size_t row = 0; row < kRows; ++row) {
    const double share = static_cast<double>(row) / static_cast<double>(kRows - 1);
    const FilteredPeak peak(weights, length * kNarrowest * std::pow(kWidest / kNarrowest, share));
    widths_.push_back(peak.Width());
    gains_.push_back(peak.At(0.0));
  }
}

double FilterGain::Of(double width) const {
  if (!(width > widths_.front())) return gains_.front();
  const auto above = std::ranges::lower_bound(widths_, width);
  if (above == widths_.end()) return 1.0;
  const auto i = static_cast<std::size_t>(above - widths_.begin());
  const double share = (width - widths_[i - 1]) / (widths_[i] - widths_[i - 1]);
  return gains_[i - 1] + share * (gains_[i] - gains_[i - 1]);
}

}  // namespace TslBL
