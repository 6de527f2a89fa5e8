#include <tslbl/closed/math/overlap/GroupFit.h>

#include <tslbl/closed/math/overlap/GroupNoise.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace TslMath {
namespace {

// In units of the width that a fit starts from.
constexpr double kReachOfTops = 1.2;
constexpr double kNarrowestFit = 1.0 / 3.0;
constexpr double kWidestFit = 3.0;
constexpr double kStartWidths[] = {0.5, 0.7, 1.0, 1.4, 2.0};

constexpr double kOtherStarts[] = {0.5, 0.75, 1.0};
constexpr double kAtLimit = 0.98;  // of the reach
constexpr double kLost = 0.0003;   // of the tallest
constexpr double kDoubtful = 2.0;  // variances
// By how much widths of their own differ, of their mean.
constexpr double kOwnWidthScatter = 0.03;
// By how many variances the squares must fall for a skew to be taken in, or widths of their own.
constexpr double kAskForSkew = 25.0;
constexpr double kAskForWidths = 16.0;
constexpr double kAskForEachWidth = 2.0;
// Points per degree of freedom of the noise that sixth differences tell.
constexpr double kPointsPerDegree = 8.0;
// Squares that exceed what is known of the noise by so many of their standard deviations are no noise.
constexpr double kBeyondNoise = 3.0;

bool IsFinite(const OverlapFit& fit) {
  double sum = fit.sum.skew + fit.sum.baseline + fit.reducedSquares;
  for (std::size_t k = 0; k < fit.sum.Count(); ++k)
    sum += fit.sum.Area(k) + fit.sum.Centroid(k) + fit.errors[k].centroid + fit.errors[k].area;
  return std::isfinite(sum);
}

}  // namespace

GroupFit::GroupFit(FitMethod method, const OverlapGroup& group)
    : method_(method),
      samples_(group.x, group.y),
      isNoiseKnown_(std::isnormal(group.variancePerMean) && group.variancePerMean > 0.0),
      variancePerMean_(isNoiseKnown_ ? group.variancePerMean / samples_.Scale()
                                     : VariancePerMean(samples_.Amplitudes())),
      builder_(samples_, group.apexes.size()) {
  for (const std::int32_t apex : group.apexes) sum_.tops.push_back(group.x[static_cast<std::size_t>(apex)]);
  limits_.tops = sum_.tops;
  limits_.startWidth = group.a3;
  limits_.reach = kReachOfTops * group.a3;
  limits_.leastWidth = kNarrowestFit * group.a3;
  limits_.greatestWidth = kWidestFit * group.a3;
}

// The start may be far off: the best of some around it, with which no peak disappears.
void GroupFit::FindStartWidth() {
  double least = HUGE_VAL;
  PeakSum best = StartSum(1.0);
  for (const double factor : kStartWidths) {
    sum_ = StartSum(factor);
    const double squares = heights_.Fit(builder_, free_.baseline, sum_);
    if (!(squares < least) || HasLostPeak()) continue;
    least = squares;
    best = sum_;
  }
  sum_ = best;
}

PeakSum GroupFit::StartSum(double widthFactor) const {
  PeakSum start;
  start.tops = limits_.tops;
  start.heights.resize(start.Count());
  start.widths.resize(start.Count(), widthFactor * limits_.startWidth);
  return start;
}

bool GroupFit::HasLostPeak() const {
  return std::ranges::min(sum_.heights) <= kLost * std::ranges::max(sum_.heights);
}

bool GroupFit::Fit(const FreeTerms& free, Precision precision) {
  const FitTask task(builder_, limits_, TermOrder(sum_.Count(), free), tie_);
  if (method_ == FitMethod::LevenbergMarquardt)
    return levenbergMarquardt_.Fit(task, sum_, equations_, precision.squares);
  const bool done = hookeJeeves_.Fit(task, sum_, precision.steps);
  task.Build(sum_, equations_);
  return done;
}

void GroupFit::WeighByFit() {
  builder_.Evaluate(sum_, values_);
  samples_.WeighBy(values_);
}

// With weights that follow the fitted curve.
bool GroupFit::FitAgain() {
  WeighByFit();
  return Fit(free_, kFine);
}

bool GroupFit::FitCommonWidth() {
  samples_.WeighBy(LocalMeans(samples_.Amplitudes()));
  FindStartWidth();
  if (!Fit(free_, kCoarse)) return false;
  if (IsDoubtful()) TryOtherStarts();
  if (!FitAgain()) return false;
  if (!HasTopAtLimit()) return true;
  limits_.tops = sum_.tops;
  return FitAgain();
}

// A start may be farther off than the limits allow for.
bool GroupFit::HasTopAtLimit() const {
  for (std::size_t k = 0; k < sum_.Count(); ++k)
    if (std::abs(sum_.tops[k] - limits_.tops[k]) > kAtLimit * limits_.reach) return true;
  return false;
}

// Where two peaks are fitted by one wide one and the other has nothing left, a start elsewhere leads lower.
bool GroupFit::IsDoubtful() const {
  return HasLostPeak() || equations_.squares > kDoubtful * variancePerMean_ * FreedomOf(free_);
}

void GroupFit::TryOtherStarts() {
  PeakSum best = sum_;
  double least = equations_.squares;
  for (const double factor : kOtherStarts) {
    sum_ = StartSum(factor);
    heights_.Fit(builder_, free_.baseline, sum_);
    if (!Fit(free_, kCoarse) || equations_.squares >= least) continue;
    least = equations_.squares;
    best = sum_;
  }
  sum_ = best;
}

double GroupFit::FreedomOf(const FreeTerms& free) const {
  return static_cast<double>(samples_.Size()) - static_cast<double>(TermOrder(sum_.Count(), free).Count());
}

// By how many variances of a point the squares will fall, of so many more free numbers; as far as that can be
// told from where they stand.
double GroupFit::GainBy(const FreeTerms& free) {
  const double freedom = FreedomOf(free);
  if (freedom < 1.0) return 0.0;
  const TermOrder order(sum_.Count(), free);
  FitEquations equations;
  FitTask(builder_, limits_, order, tie_).Build(sum_, equations);
  Cholesky factor;
  if (!factor.Factor(equations.matrix, UndeterminedTerms(sum_, order))) return 0.0;
  const double gain = factor.Variance(equations.slope);
  return gain / std::max(variancePerMean_, (equations.squares - gain) / freedom);
}

// What the points ask for most clearly first: the fall of the squares against what noise could do.
bool GroupFit::TakeInWhatIsAskedFor() {
  const double width = sum_.widths[0];
  const double noise = std::max(variancePerMean_, equations_.squares / FreedomOf(free_));
  tie_.strength = noise / (kOwnWidthScatter * kOwnWidthScatter * width * width);
  for (int taken = 0; taken < 2; ++taken) {
    FreeTerms skewed = free_;
    skewed.skew = true;
    FreeTerms own = free_;
    own.widths = FreeTerms::Widths::Own;
    const double forSkew = free_.skew ? 0.0 : GainBy(skewed) - kAskForSkew;
    const auto more = static_cast<double>(sum_.Count() - 1);
    const double forOwn = own.widths == free_.widths || more == 0.0
                              ? 0.0
                              : GainBy(own) - kAskForWidths - kAskForEachWidth * more;
    if (std::max(forSkew, forOwn) <= 0.0) break;
    free_ = forSkew > forOwn ? skewed : own;
    if (!Fit(free_, kCoarse) || !FitAgain()) return false;
  }
  return true;
}

// What is left of the points says how large their noise is, and so, where few are left, do their differences.
double GroupFit::NoiseOfPoint() const {
  const double freedom = std::max(FreedomOf(free_), 0.0);
  if (isNoiseKnown_) {
    const double most = variancePerMean_ * (freedom + kBeyondNoise * std::sqrt(2.0 * freedom));
    return equations_.squares > most ? equations_.squares / freedom : variancePerMean_;
  }
  const double degrees = static_cast<double>(samples_.Size()) / kPointsPerDegree;
  return (equations_.squares + degrees * variancePerMean_) / (freedom + degrees);
}

double GroupFit::Noise() {
  const double noise = NoiseOfPoint();
  builder_.Evaluate(sum_, values_);
  values_.resize(samples_.Size());
  for (std::size_t i = 0; i < values_.size(); ++i)
    values_[i] = (samples_.Y()[i] - values_[i]) * samples_.RootWeights()[i];
  return noise * CorrelationFactor(values_);
}

// In the units of the caller.
OverlapFit GroupFit::Scaled(const std::vector<FitError>& errors) const {
  const double scale = samples_.Scale();
  OverlapFit fit;
  fit.sum.skew = sum_.skew;
  fit.sum.baseline = sum_.baseline * scale;
  fit.reducedSquares = equations_.squares / (variancePerMean_ * std::max(FreedomOf(free_), 1.0));
  for (const std::size_t k : OrderOfTops(sum_)) {
    fit.sum.heights.push_back(sum_.heights[k] * scale);
    fit.sum.tops.push_back(sum_.tops[k]);
    fit.sum.widths.push_back(sum_.widths[k]);
    fit.errors.push_back({errors[k].centroid, errors[k].area * scale});
  }
  return fit;
}

std::optional<OverlapFit> GroupFit::Run() {
  if (!FitCommonWidth() || !TakeInWhatIsAskedFor()) return std::nullopt;
  const double noise = Noise();
  const std::vector<FitError> errors = ErrorsOf(sum_, TermOrder(sum_.Count(), free_), equations_, noise);
  if (errors.empty()) return std::nullopt;
  const OverlapFit fit = Scaled(errors);
  return IsFinite(fit) ? std::optional(fit) : std::nullopt;
}

}  // namespace TslMath
