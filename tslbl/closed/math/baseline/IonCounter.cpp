#include <tslbl/closed/math/baseline/IonCounter.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace TslMath {
namespace {

// What exceeds the mean by so many standard deviations is a peak.
constexpr double kPeakLimit = 4.5;
constexpr std::size_t kFlanksInSegment = 20;
// Points; with fewer the mean of a segment stays as it is.
constexpr double kLeastBackground = 50.0;
constexpr std::size_t kLeastBumps = 8;
// Single ions, filtered or not, give variance / mean of about the height of the low bumps, more ions a lower
// one; bumps that differ in height, of peaks or of noise, a larger one.
constexpr double kAlike = 1.75;
constexpr double kMostUnlike = 3.0;
// Noise above a threshold piles up: of all bumps at least this share is at most so many times as high as the
// low ones. Peaks have heights of all orders.
constexpr double kPile = 2.0;
constexpr double kLeastInPile = 0.3;
constexpr std::size_t kLeastOfNoise = 32;
constexpr double kLow = 0.05;
// The lower end of what a threshold leaves is an edge: between the bumps that these shares are below there is
// little. Above it there is all of noise.
constexpr double kEdgeFrom = 0.02;
constexpr double kEdgeTo = 0.1;
constexpr double kEdge = 1.25;
constexpr double kAboveEdge = 1.3;
// Ions that stand alone are equally high, or come as multiples; peaks never do. Of many bumps this need not
// be asked: peaks so many have heights of all orders.
constexpr std::size_t kMany = 200;
constexpr double kEqual = 1e-6;
constexpr double kLeastEqual = 0.25;  // of those that no other is near
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
    const std::vector<double> all = Bumps();
    std::vector<double> bumps = all;
    height_ = LowerQuartile(bumps);
    for (int round = 0; round < kCountingRounds; ++round) {
      const double before = height_;
      Measure();
      if (std::abs(height_ - before) <= kSettled * height_) break;
    }
    bumps = Bumps();
    const double threshold = ThresholdOf(all);
    const double low = bumps.size() >= kLeastBumps ? LowerQuartile(bumps) : 0.0;
    const bool isCut = threshold > 0.0 && (height_ > kAlike * low || IsCutAt(threshold) || HasEdge(all));
    if (isCut) return {0.0, threshold};
    return {height_ <= kMostUnlike * low && MayBeIons(bumps) ? height_ : 0.0, 0.0};
  }

 private:
  // What the background does not exceed; before the height is known there is no such limit.
  double PeakLimit(const IonBackground& segment) const {
    if (!(height_ > 0.0)) return std::numeric_limits<double>::infinity();
    return segment.mean + kPeakLimit * std::sqrt(height_ * (segment.mean + height_));
  }

  // Heights of the local maxima of the background.
  std::vector<double> Bumps() const {
    std::vector<double> bumps;
    for (const IonBackground& segment : segments_) {
      const double limit = PeakLimit(segment);
      for (std::size_t i = std::max<std::size_t>(segment.begin, 1); i < segment.end && i + 1 < n_; ++i) {
        const double above = y_[i] - floor_.value;
        if (y_[i] > y_[i - 1] && y_[i] >= y_[i + 1] && above > floor_.rounding && above <= limit)
          bumps.push_back(above);
      }
    }
    return bumps;
  }

  // The one that this share of them is lower than.
  static double Quantile(std::vector<double>& bumps, double share) {
    if (bumps.empty()) return 0.0;
    const auto at = bumps.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(bumps.size()));
    std::nth_element(bumps.begin(), at, bumps.end());
    return *at;
  }
  static double LowerQuartile(std::vector<double>& bumps) { return Quantile(bumps, 0.25); }

  // How many have the height of another one.
  static double ShareOfEqual(std::vector<double> bumps) {
    std::ranges::sort(bumps);
    std::size_t equal = 0;
    for (std::size_t i = 0; i < bumps.size(); ++i) {
      const double width = kEqual * bumps[i];
      equal += (i > 0 && bumps[i] - bumps[i - 1] <= width) ||
               (i + 1 < bumps.size() && bumps[i + 1] - bumps[i] <= width);
    }
    return static_cast<double>(equal) / static_cast<double>(bumps.size());
  }

  // Not of counts, whose smallest is an edge, too.
  static bool HasEdge(std::vector<double> bumps) {
    const double edge = Quantile(bumps, kEdgeTo);
    return edge < kEdge * Quantile(bumps, kEdgeFrom) && Quantile(bumps, 0.5) > kAboveEdge * edge &&
           ShareOfEqual(bumps) < kLeastEqual;
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

  static double ThresholdOf(std::vector<double> bumps) {
    if (bumps.size() < kLeastOfNoise) return 0.0;
    const double low = Quantile(bumps, kLow);
    const auto piled = std::ranges::count_if(bumps, [&](double bump) { return bump <= kPile * low; });
    return static_cast<double>(piled) >= kLeastInPile * static_cast<double>(bumps.size()) ? low : 0.0;
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
