#include <tslbl/detect/FindFeatures.h>

#include <tslbl/curve/Execute.h>
#include <tslbl/detect/PeakStarts.h>
#include <tslbl/detect/RejectionBound.h>
#include <algorithm>
#include <limits>

namespace TslBL {
namespace {

// The sweep of one part.
class Sweeper {
 public:
  Sweeper(const CurveView& curve, double maxValley, const RejectionBound* bound, std::ptrdiff_t begin,
          std::ptrdiff_t end, std::vector<PeakFeature>& features)
      : curve_(curve),
        maxValley_(maxValley),
        bound_(bound),
        end_(end),
        first_(std::max<std::ptrdiff_t>(begin - 1, 0)),
        bits_(curve, first_, end),
        starts_(curve, bits_, first_),
        features_(features) {
    p_ = FirstOf(begin);
  }

  // Stretch by stretch of points above the baseline: from where the curve rises above it to where
  // it falls back. No peak reaches out of its stretch, nor does it cut one in another stretch.
  void Run() {
    const auto isAbove = [](const PointBits& b) { return b.above; };
    const auto isBelow = [](const PointBits& b) { return ~b.above; };
    for (p_ = bits_.Next(p_, end_, isAbove); p_ < end_; p_ = bits_.Next(p_, end_, isAbove)) {
      const std::ptrdiff_t first = std::max(bits_.Previous(p_ - 1, first_, isBelow), first_);
      const std::ptrdiff_t end = bits_.Next(p_, end_, isBelow);
      SweepStretch(first, std::min(end, curve_.n - 1), end);
      p_ = end;
    }
  }

 private:
  void SweepStretch(std::ptrdiff_t first, std::ptrdiff_t last, std::ptrdiff_t end) {
    if (bound_ != nullptr && bound_->RejectsAllBetween(first, last)) return;
    bits_.Compare(first, last);
    while (p_ < end && Step()) {
    }
  }

  std::ptrdiff_t FirstOf(std::ptrdiff_t begin) const;
  bool Step();
  bool MoveToApex();
  std::ptrdiff_t StartOf(std::ptrdiff_t apex, double valley);
  void FollowToEnd(PeakFeature& feature, double valley);
  std::ptrdiff_t NextTurn(std::ptrdiff_t c, std::ptrdiff_t end) const;

  const CurveView& curve_;
  double maxValley_;
  const RejectionBound* bound_;
  std::ptrdiff_t end_;
  std::ptrdiff_t first_;
  std::ptrdiff_t p_ = 0;
  BitsOfStretch bits_;
  PeakStarts starts_;
  std::vector<PeakFeature> taller_;  // the features not lower than any behind them
  std::vector<PeakFeature>& features_;
};

// A curve that begins with a plateau has no apex on it unless the curve falls from there; a
// curve that is a single plateau has none at all.
std::ptrdiff_t Sweeper::FirstOf(std::ptrdiff_t begin) const {
  if (begin > 0) return begin;
  const double* y = curve_.y;
  std::ptrdiff_t other = 1;
  while (other < curve_.n && y[other] == y[0]) ++other;
  return other == curve_.n || y[other] > y[0] ? other : 0;
}

// Finds the next feature of the stretch at or behind p and moves p behind it. Returns false
// where there is none.
bool Sweeper::Step() {
  if (!MoveToApex() || !curve_.AboveBaseline(p_)) return false;

  const double valley = CalcPeakValleyAmplitude(curve_.y[p_], curve_.baseline[p_], maxValley_);
  PeakFeature feature;
  feature.apex = p_;
  feature.start = StartOf(p_, valley);
  FollowToEnd(feature, valley);
  taller_.push_back(feature);
  features_.push_back(feature);
  return true;
}

// Moves p, a point above the baseline, to the next apex, the left end of a plateau, or to where
// the curve falls to the baseline again. False if the part holds neither.
bool Sweeper::MoveToApex() {
  const double* y = curve_.y;
  const std::ptrdiff_t last = end_ - 1;
  p_ = bits_.Next(p_, std::max(p_, last), [](const PointBits& b) { return b.apex | ~b.above; });
  return p_ < last || p_ == 0 || y[p_ - 1] < y[p_];
}

// An earlier feature that reaches into the new one and is not lower keeps what it has. Lower ones
// are forgotten: whatever comes later and would be cut by them is cut by the new one first.
std::ptrdiff_t Sweeper::StartOf(std::ptrdiff_t apex, double valley) {
  const std::ptrdiff_t start = starts_.Of(apex, valley);
  while (!taller_.empty() && curve_.y[taller_.back().apex] < curve_.y[apex]) taller_.pop_back();
  return taller_.empty() ? start : std::max(start, taller_.back().end);
}

// Walks right from the apex, sets the feature's end and moves p behind it. Between two of the
// places where the curve begins to rise it only falls, so that it is lowest there.
void Sweeper::FollowToEnd(PeakFeature& feature, double valley) {
  const double* y = curve_.y;
  const std::ptrdiff_t last = curve_.n - 1;
  double lowest = std::numeric_limits<double>::infinity();
  std::ptrdiff_t c = feature.apex;
  for (; c < last - 1; ++c) {
    c = NextTurn(c, last - 1);
    if (c == last - 1) break;
    if (c > feature.apex) lowest = std::min(lowest, y[c]);
    const bool low = std::min(lowest, y[c + 1]) <= valley;
    const bool valleyBottom = low && bits_.Has(c, &PointBits::rise);
    const bool atBaseline = !bits_.Has(c + 1, &PointBits::above);
    const bool tallerNext = bits_.Has(c + 1, &PointBits::apex) && y[c + 1] > y[feature.apex];
    if (valleyBottom || atBaseline || tallerNext) {
      feature.end = atBaseline && !valleyBottom ? c + 1 : c;
      p_ = c + 1;
      return;
    }
  }
  feature.end = c < last && y[c] > y[c + 1] ? c + 1 : c;
  p_ = c + 1;
}

// The first point from c on that is followed by a rise, an apex or one not above the baseline;
// `end` if that comes first.
std::ptrdiff_t Sweeper::NextTurn(std::ptrdiff_t c, std::ptrdiff_t end) const {
  const std::ptrdiff_t next =
      bits_.Next(c + 1, end + 1, [](const PointBits& b) { return b.apex | ~b.above; });
  return bits_.Next(c, std::min(next - 1, end), [](const PointBits& b) { return b.rise; });
}

}  // namespace

void FindFeatures::Sweep(std::ptrdiff_t begin, std::ptrdiff_t end) {
  Sweeper(curve_, maxValley_, bound_, begin, end, features_).Run();
}

void FindFeatures::Join(const FindFeatures& right) {
  features_.insert(features_.end(), right.features_.begin(), right.features_.end());
}

// From right to left, since the later of two features has already yielded to an earlier one
// that is not lower. One that is swallowed no longer cuts others.
std::vector<PeakFeature> FindFeatures::Settled() const {
  const double* y = curve_.y;
  std::vector<PeakFeature> kept;
  kept.reserve(features_.size());
  for (auto f = features_.rbegin(); f != features_.rend(); ++f) {
    PeakFeature feature = *f;
    if (!kept.empty() && f->end >= kept.back().start && y[f->apex] < y[kept.back().apex]) {
      if (f->apex >= kept.back().start) continue;
      feature.end = kept.back().start;
    }
    kept.push_back(feature);
  }
  std::ranges::reverse(kept);
  return kept;
}

}  // namespace TslBL
