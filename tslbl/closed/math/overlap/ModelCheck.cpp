#include <tslbl/closed/math/overlap/ModelCheck.h>

#include <tslbl/closed/math/overlap/GroupNoise.h>
#include <tslbl/closed/math/peak/GaussPeak.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace TslMath {
namespace {

constexpr int kMostAdded = 4;
constexpr std::size_t kMostChecked = 64;
constexpr std::uint64_t kMostEffort = 300'000'000;
// How far a single peak may deviate from a Gaussian, in heights: less would split those that tail or have a
// flat top.
constexpr double kShapeTolerance = 0.04;
// By how many variances a further peak must lower the squares.
constexpr double kLeastFall = 30.0;
constexpr double kLowestPeak = 0.03;    // of the tallest
constexpr double kLeastSpacing = 0.75;  // FWHM
// In units of the likely width.
constexpr double kNarrowestTrial = 0.6;
constexpr double kWidestTrial = 1.6;
constexpr double kReachOfFirst = 1.5;
constexpr double kReachOfTrial = 2.0;
constexpr double kStartNarrower = 0.8;
constexpr double kSplit = 0.8;  // of the fitted width, to both sides
// Of the squares.
constexpr double kCoarse = 1e-2;
constexpr double kFine = 1e-4;

std::vector<double> Indexes(std::size_t n) {
  std::vector<double> x(n);
  std::iota(x.begin(), x.end(), 0.0);
  return x;
}

}  // namespace

ModelCheck::ModelCheck(std::span<const double> y, double variancePerMean, double width)
    : samples_(Indexes(y.size()), y),
      variancePerMean_(variancePerMean / samples_.Scale()),
      width_(width),
      builder_(samples_, kMostChecked) {
  samples_.WeighBy(LocalMeans(samples_.Amplitudes()), kShapeTolerance / std::sqrt(variancePerMean_));
}

ModelCheck::Attempt ModelCheck::Fit(std::vector<double> centres, double width, double reach,
                                    double tolerance) {
  PeakSum sum;
  sum.heights.resize(centres.size());
  sum.widths.resize(centres.size(), width);
  sum.tops = centres;
  FitLimits limits;
  limits.tops = std::move(centres);
  limits.reach = reach * width_;
  limits.leastWidth = kNarrowestTrial * width_;
  limits.greatestWidth = kWidestTrial * width_;
  limits.Apply(sum);
  heights_.Fit(builder_, true, sum);
  fit_.Fit(FitTask(builder_, limits, TermOrder(sum.Count(), {})), sum, tolerance);
  return {sum, fit_.Equations().squares / variancePerMean_};
}

std::vector<double> ModelCheck::SplitAt(const PeakSum& sum, std::size_t peak) const {
  std::vector<double> centres = sum.tops;
  centres.push_back(sum.tops[peak] + kSplit * sum.widths[peak]);
  centres[peak] -= kSplit * sum.widths[peak];
  return centres;
}

// Where one more peak of the same width would take away most.
double ModelCheck::LargestResidual(const PeakSum& sum) {
  builder_.Evaluate(sum, values_);
  const double width = sum.widths[0];
  const auto half = static_cast<std::ptrdiff_t>(2.0 * width);
  const auto size = static_cast<std::ptrdiff_t>(samples_.Size());
  std::ptrdiff_t largest = 0;
  double most = 0.0;
  for (std::ptrdiff_t i = 0; i < size; ++i) {
    double product = 0.0;
    double squares = 0.0;
    for (std::ptrdiff_t k = std::max<std::ptrdiff_t>(0, i - half); k <= std::min(size - 1, i + half); ++k) {
      const double u = static_cast<double>(k - i) / width;
      const double shape = std::exp(-0.5 * u * u) * samples_.RootWeights()[k];
      const auto at = static_cast<std::size_t>(k);
      product += shape * (samples_.Y()[at] - values_[at]) * samples_.RootWeights()[at];
      squares += shape * shape;
    }
    if (product <= 0.0 || product * product <= most * squares) continue;
    most = product * product / squares;
    largest = i;
  }
  return static_cast<double>(largest);
}

bool ModelCheck::IsPlausible(const PeakSum& sum) const {
  const double tallest = std::ranges::max(sum.heights);
  const double spacing = kLeastSpacing * GaussPeak::A3_to_FWHM(sum.widths[0]);
  const std::vector<std::size_t> order = OrderOfTops(sum);
  for (std::size_t i = 1; i < order.size(); ++i)
    if (sum.tops[order[i]] - sum.tops[order[i - 1]] < spacing) return false;
  return std::ranges::min(sum.heights) >= kLowestPeak * tallest && sum.tops[order.front()] >= 0.0 &&
         sum.tops[order.back()] <= static_cast<double>(samples_.Size() - 1);
}

bool ModelCheck::IsSpent() const { return builder_.Effort() > kMostEffort; }

// The best of one peak split in two, or one put where most is left over.
bool ModelCheck::AddOne(Attempt& best) {
  const Attempt before = best;
  const double width = kStartNarrower * std::min(before.sum.widths[0], width_);
  for (std::size_t k = 0; k <= before.sum.Count() && !IsSpent(); ++k) {
    std::vector<double> centres = before.sum.tops;
    if (k < before.sum.Count())
      centres = SplitAt(before.sum, k);
    else
      centres.push_back(LargestResidual(before.sum));
    Attempt attempt = Fit(std::move(centres), width, kReachOfTrial, kCoarse);
    if (attempt.squares < best.squares && IsPlausible(attempt.sum)) best = std::move(attempt);
  }
  return before.squares - best.squares >= kLeastFall;
}

std::vector<double> ModelCheck::AddMissing(const std::vector<double>& centres) {
  if (centres.size() > kMostChecked - kMostAdded) return centres;
  Attempt best = Fit(centres, width_, kReachOfFirst, kFine);
  for (int added = 0; added < kMostAdded && best.squares >= kLeastFall && !IsSpent(); ++added) {
    Attempt more = best;
    if (!AddOne(more)) break;
    best = Fit(more.sum.tops, more.sum.widths[0], kReachOfTrial, kFine);
  }
  std::ranges::sort(best.sum.tops);
  return best.sum.tops;
}

}  // namespace TslMath
