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
// What is left may be noise: in standard deviations, below which it must not be for a trial to be worth
// while.
constexpr double kBelowNoise = 2.0;
constexpr double kLowestPeak = 0.03;    // of the tallest
constexpr double kLeastSpacing = 0.75;  // FWHM
// In units of the likely width.
constexpr double kNarrowestTrial = 0.6;
constexpr double kWidestTrial = 1.6;
constexpr double kReachOfFirst = 1.5;
constexpr double kReachOfTrial = 2.0;
constexpr double kStartNarrower = 0.8;
constexpr double kSplit = 0.8;         // of the fitted width, to both sides
constexpr std::size_t kMostSplit = 2;  // peaks that are tried at a time
constexpr double kNear = 1.5;          // widths
// Of the squares.
constexpr double kCoarse = 1e-2;
constexpr double kFine = 1e-4;

std::vector<double> Indexes(std::size_t n) {
  std::vector<double> x(n);
  std::iota(x.begin(), x.end(), 0.0);
  return x;
}

}  // namespace

ModelCheck::ModelCheck(std::span<const double> y, const GroupNoise& noise, double width)
    : samples_(Indexes(y.size()), y),
      variancePerMean_(noise.variancePerMean / samples_.Scale()),
      width_(width),
      builder_(samples_, kMostChecked) {
  const double perRoot = 1.0 / std::sqrt(variancePerMean_);
  samples_.WeighBy(
      LocalMeans(samples_.Amplitudes()),
      {kShapeTolerance * perRoot, noise.distortion * perRoot * std::ranges::max(samples_.Amplitudes())});
  // Of the weighted variance of a point the part that is noise.
  double expected = 0.0;
  for (std::size_t i = 0; i < y.size(); ++i)
    expected += std::max(samples_.Y()[i], 0.0) * samples_.RootWeights()[i] * samples_.RootWeights()[i];
  enough_ = expected - kBelowNoise * std::sqrt(2.0 * expected) + kLeastFall;
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
  fit_.Fit(FitTask(builder_, limits, TermOrder(sum.Count(), {})), sum, equations_, tolerance);
  return {sum, equations_.squares / variancePerMean_};
}

std::vector<double> ModelCheck::SplitAt(const PeakSum& sum, std::size_t peak) const {
  std::vector<double> centres = sum.tops;
  centres.push_back(sum.tops[peak] + kSplit * sum.widths[peak]);
  centres[peak] -= kSplit * sum.widths[peak];
  return centres;
}

void ModelCheck::FindResiduals(const PeakSum& sum) {
  builder_.Evaluate(sum, residuals_);
  for (std::size_t i = 0; i < residuals_.size(); ++i)
    residuals_[i] = (samples_.Y()[i] - residuals_[i]) * samples_.RootWeights()[i];
}

// Where one more peak of the same width would take away most.
double ModelCheck::LargestResidual(double width) const {
  const auto half = static_cast<std::size_t>(2.0 * width);
  std::vector<double> shape(2 * half + 1);
  for (std::size_t k = 0; k < shape.size(); ++k) {
    const double u = (static_cast<double>(k) - static_cast<double>(half)) / width;
    shape[k] = std::exp(-0.5 * u * u);
  }
  std::size_t largest = 0;
  double most = 0.0;
  for (std::size_t i = 0; i < samples_.Size(); ++i) {
    double product = 0.0;
    double squares = 0.0;
    for (std::size_t k = i < half ? half - i : 0; k < shape.size() && i + k < samples_.Size() + half; ++k) {
      const double weighed = shape[k] * samples_.RootWeights()[i + k - half];
      product += weighed * residuals_[i + k - half];
      squares += weighed * weighed;
    }
    if (product <= 0.0 || product * product <= most * squares) continue;
    most = product * product / squares;
    largest = i;
  }
  return static_cast<double>(largest);
}

double ModelCheck::MisfitNear(double top, double width) const {
  const double last = static_cast<double>(samples_.Size() - 1);
  const auto from = static_cast<std::size_t>(std::clamp(top - kNear * width, 0.0, last));
  const auto to = static_cast<std::size_t>(std::clamp(top + kNear * width, 0.0, last));
  double squares = 0.0;
  for (std::size_t i = from; i <= to; ++i) squares += residuals_[i] * residuals_[i];
  return squares;
}

// Those that the points deviate from most.
std::vector<std::size_t> ModelCheck::PeaksToSplit(const PeakSum& sum) const {
  std::vector<double> misfits;
  for (std::size_t k = 0; k < sum.Count(); ++k) misfits.push_back(MisfitNear(sum.tops[k], sum.widths[k]));
  std::vector<std::size_t> peaks(sum.Count());
  std::iota(peaks.begin(), peaks.end(), std::size_t{0});
  std::ranges::sort(peaks, std::ranges::greater{}, [&](std::size_t k) { return misfits[k]; });
  peaks.resize(std::min(peaks.size(), kMostSplit));
  return peaks;
}

std::ptrdiff_t ModelCheck::LowPeaks(const PeakSum& sum) {
  const double least = kLowestPeak * std::ranges::max(sum.heights);
  return std::ranges::count_if(sum.heights, [&](double height) { return height < least; });
}

// Of a sum with one peak more than `before`, whose peaks may be low as they show a maximum of their own.
bool ModelCheck::IsPlausible(const PeakSum& sum, const PeakSum& before) const {
  const double spacing = kLeastSpacing * GaussPeak::A3_to_FWHM(sum.widths[0]);
  const std::vector<std::size_t> order = OrderOfTops(sum);
  for (std::size_t i = 1; i < order.size(); ++i)
    if (sum.tops[order[i]] - sum.tops[order[i - 1]] < spacing) return false;
  return LowPeaks(sum) <= LowPeaks(before) && sum.tops[order.front()] >= 0.0 &&
         sum.tops[order.back()] <= static_cast<double>(samples_.Size() - 1);
}

bool ModelCheck::IsSpent() const { return builder_.Effort() > kMostEffort; }

// The best of some peaks split in two, and one put where most is left over.
bool ModelCheck::AddOne(Attempt& best) {
  const Attempt before = best;
  const double width = kStartNarrower * std::min(before.sum.widths[0], width_);
  const auto attempt = [&](std::vector<double> centres) {
    if (IsSpent()) return;
    Attempt more = Fit(std::move(centres), width, kReachOfTrial, kCoarse);
    if (more.squares < best.squares && IsPlausible(more.sum, before.sum)) best = std::move(more);
  };
  FindResiduals(before.sum);
  for (const std::size_t k : PeaksToSplit(before.sum)) attempt(SplitAt(before.sum, k));
  std::vector<double> centres = before.sum.tops;
  centres.push_back(LargestResidual(before.sum.widths[0]));
  attempt(std::move(centres));
  return before.squares - best.squares >= kLeastFall;
}

std::vector<double> ModelCheck::AddMissing(const std::vector<double>& centres) {
  if (centres.size() > kMostChecked - kMostAdded) return centres;
  Attempt best = Fit(centres, width_, kReachOfFirst, kFine);
  for (int added = 0; added < kMostAdded && best.squares >= enough_ && !IsSpent(); ++added) {
    Attempt more = best;
    if (!AddOne(more)) break;
    best = Fit(more.sum.tops, more.sum.widths[0], kReachOfTrial, kFine);
  }
  std::ranges::sort(best.sum.tops);
  return best.sum.tops;
}

}  // namespace TslMath
