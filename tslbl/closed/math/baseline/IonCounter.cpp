#include <tslbl/closed/math/baseline/IonCounter.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/baseline/BumpHeights.h>
#include <tslbl/closed/math/baseline/NoiseThreshold.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace TslMath {
namespace {

// What exceeds the mean by so many standard deviations is a peak.
constexpr double kPeakLimit = 4.5;
constexpr std::size_t kFlanksInSegment = 20;
// Points; with fewer the mean of a segment stays as it is.
constexpr double kLeastBackground = 50.0;
constexpr std::size_t kLeastBumps = 8;
constexpr double kLow = 0.25;
// Single ions, filtered or not, give variance / mean of about the height of the low bumps, more ions a lower
// one; bumps that differ in height, of peaks or of noise, a larger one.
constexpr double kAlike = 1.75;
constexpr double kMostUnlike = 3.0;
// Ions that stand alone are equally high, or come as multiples; peaks never do. Of many bumps this need not
// be asked: peaks so many have heights of all orders, and a detector may give each ion another height.
constexpr std::size_t kMany = 200;
constexpr double kLeastEqual = 0.25;  // of those that no other is near
constexpr double kOneStep = 1.5;
constexpr double kLeastAlone = 0.25;
// Of the threshold: what the steps of continuous amplitudes do not reach, and what few points above the floor
// are below.
constexpr double kContinuous = 0.5;
constexpr double kBelow = 0.8;
constexpr std::size_t kFewOf = 50;
constexpr int kCountingRounds = 8;
constexpr double kSettled = 1e-3;

struct Moments {
  double count = 0.0;
  double sum = 0.0;
  double squares = 0.0;
};

class IonCounter {
 public:
  IonCounter(const double* y, std::size_t n, const CurveFloor& floor, std::size_t flank, double quantum,
             std::vector<IonBackground>& segments)
      : y_(y), n_(n), floor_(floor), flank_(flank), quantum_(quantum), segments_(segments) {}

  FloorBumps Judge() {
    const std::vector<Knot> all = Bumps();
    height_ = Quantile(HeightsOf(all), kLow);
    for (int round = 0; round < kCountingRounds; ++round) {
      const double before = height_;
      Measure();
      if (std::abs(height_ - before) <= kSettled * height_) break;
    }
    const std::vector<double> bumps = HeightsOf(Bumps());
    const double low = bumps.size() >= kLeastBumps ? Quantile(bumps, kLow) : 0.0;
    // Beside weak lines variance / mean is larger than an ion.
    if (height_ > kAlike * low && StandAlone(all)) return {quantum_, {}};
    NoiseThreshold threshold = FindNoiseThreshold(all);
    const double least = threshold.Least();
    if (least > 0.0 && (height_ > kAlike * low || IsCutAt(least) || threshold.hasEdge))
      return {0.0, std::move(threshold.levels)};
    return {height_ <= kMostUnlike * low && MayBeIons(bumps) ? height_ : 0.0, {}};
  }

 private:
  // What the background does not exceed; before the height is known there is no such limit.
  double PeakLimit(const IonBackground& segment) const {
    if (!(height_ > 0.0)) return std::numeric_limits<double>::infinity();
    return segment.mean + kPeakLimit * std::sqrt(height_ * (segment.mean + height_));
  }

  // The local maxima of the background.
  std::vector<Knot> Bumps() const {
    std::vector<Knot> bumps;
    for (const IonBackground& segment : segments_) {
      const double limit = PeakLimit(segment);
      for (std::size_t i = std::max<std::size_t>(segment.begin, 1); i < segment.end && i + 1 < n_; ++i) {
        const double above = y_[i] - floor_.value;
        if (y_[i] > y_[i - 1] && y_[i] >= y_[i + 1] && above > floor_.rounding && above <= limit)
          bumps.push_back({static_cast<double>(i), above});
      }
    }
    return bumps;
  }

  // The part of the points that nothing has reached.
  double Empty() const {
    double points = 0.0;
    double onFloor = 0.0;
    for (const IonBackground& segment : segments_) {
      const auto length = static_cast<double>(segment.end - segment.begin);
      points += length;
      onFloor += length * segment.onFloor;
    }
    return onFloor / points;
  }

  // An ion lies alone if nothing has reached the places on either side.
  bool MayBeIons(const std::vector<double>& bumps) const {
    return bumps.size() >= kMany || ShareOfEqual(bumps) >= kLeastEqual * Empty() * Empty();
  }

  // Whether many bumps are one point of the smallest step: ions that no filter has spread. Rounded lines are
  // wider.
  bool StandAlone(const std::vector<Knot>& bumps) const {
    const auto alone = std::ranges::count_if(bumps, [this](const Knot& bump) {
      const auto i = static_cast<std::size_t>(bump.position);
      return bump.level < kOneStep * quantum_ && y_[i - 1] <= floor_.value && y_[i + 1] <= floor_.value;
    });
    return static_cast<double>(alone) >= kLeastAlone * static_cast<double>(bumps.size()) &&
           alone >= static_cast<std::ptrdiff_t>(kLeastBumps);
  }

  // Whether most of the curve is floor, from which the rest jumps to heights of all sizes above the
  // threshold. Ions that no filter has spread have the height of the smallest step, and what a filter has
  // spread does not jump.
  bool IsCutAt(double threshold) const {
    if (quantum_ > kContinuous * threshold) return false;
    std::size_t below = 0;
    std::size_t all = 0;
    for (std::size_t i = 0; i < n_; ++i) {
      const double above = y_[i] - floor_.value;
      if (!(above > floor_.rounding)) continue;
      ++all;
      below += above < kBelow * threshold ? 1 : 0;
    }
    return 2 * all < n_ && below * kFewOf <= all;
  }

  // The mean of each background, and the height of an ion from all of them.
  void Measure() {
    double variances = 0.0;
    double means = 0.0;
    for (IonBackground& segment : segments_) {
      const Moments m = BackgroundOf(segment);
      if (!(m.count > kLeastBackground)) continue;
      const double mean = m.sum / m.count;
      segment.mean = std::max(mean, 0.0);
      variances += std::max(m.squares / m.count - mean * mean, 0.0);
      means += segment.mean;
    }
    if (means > 0.0) height_ = variances / means;
  }

  // Of the points that are no peak, and farther than a flank from any.
  Moments BackgroundOf(const IonBackground& segment) const {
    const double limit = floor_.value + PeakLimit(segment);
    const std::size_t from = segment.begin - std::min(segment.begin, flank_);
    const std::size_t to = std::min(segment.end + flank_, n_);
    Moments moments;
    std::size_t clean = segment.begin;  // the first point behind the flank of the last peak
    for (std::size_t i = from; i < to; ++i) {
      if (y_[i] <= limit) continue;
      Add(clean, std::min(segment.end, i - std::min(i, flank_)), moments);
      clean = std::max(clean, i + flank_ + 1);
    }
    Add(clean, segment.end, moments);
    return moments;
  }

  void Add(std::size_t begin, std::size_t end, Moments& moments) const {
    for (std::size_t i = begin; i < end; ++i) {
      const double above = y_[i] - floor_.value;
      if (!std::isfinite(above)) continue;
      moments.count += 1.0;
      moments.sum += above;
      moments.squares += above * above;
    }
  }

  const double* y_;
  std::size_t n_;
  const CurveFloor& floor_;
  std::size_t flank_;
  double quantum_;
  std::vector<IonBackground>& segments_;
  double height_ = 0.0;
};

}  // namespace

FloorBumps JudgeBumps(const double* y, std::size_t n, const CurveFloor& floor, std::size_t segment,
                      double quantum, std::vector<IonBackground>& segments) {
  return IonCounter(y, n, floor, segment / kFlanksInSegment, quantum, segments).Judge();
}

}  // namespace TslMath
