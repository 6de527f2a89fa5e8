#include <tslbl/curve/FindFeatures.h>

#include <tslbl/curve/Execute.h>
#include <algorithm>

namespace TslBL {

void FindFeatures::Sweep(std::ptrdiff_t begin, std::ptrdiff_t end) {
  std::ptrdiff_t p = FirstOf(begin);
  while (p < end && Step(p, end)) {
  }
}

// A curve that begins with a plateau has no apex on it unless the curve falls from there; a
// curve that is a single plateau has none at all.
std::ptrdiff_t FindFeatures::FirstOf(std::ptrdiff_t begin) const {
  if (begin > 0) return begin;
  const double* y = curve_.y;
  std::ptrdiff_t other = 1;
  while (other < curve_.n && y[other] == y[0]) ++other;
  return other == curve_.n || y[other] > y[0] ? other : 0;
}

// Finds the next feature at or behind p and moves p behind it. Returns false when the sweep
// has come to its end.
bool FindFeatures::Step(std::ptrdiff_t& p, std::ptrdiff_t end) {
  const std::ptrdiff_t last = end - 1;
  if (!MoveToApex(p, end)) return false;
  if (!curve_.AboveBaseline(p)) return p < last;

  const double valley = CalcPeakValleyAmplitude(curve_.y[p], curve_.baseline[p], maxValley_);
  PeakFeature feature;
  feature.apex = p;
  feature.start = StartOf(p, valley);
  const bool goOn = FollowToEnd(feature, valley, p);
  features_.push_back(feature);
  return goOn;
}

// Moves p to the next apex, the left end of a plateau, or to where the curve falls to the
// baseline again. False if the part holds neither.
bool FindFeatures::MoveToApex(std::ptrdiff_t& p, std::ptrdiff_t end) const {
  const double* y = curve_.y;
  const std::ptrdiff_t last = end - 1;
  while (p < end && !curve_.AboveBaseline(p)) ++p;
  if (p == end) return false;
  for (; p < last; ++p) {
    if (!curve_.AboveBaseline(p)) return true;
    if ((p == 0 || y[p - 1] < y[p]) && y[p + 1] <= y[p]) return true;
  }
  return p == 0 || y[p - 1] < y[p];
}

// An earlier feature that reaches into the new one and is not lower keeps what it has. Ends
// ascend, so the first one that does not reach is the last to look at.
std::ptrdiff_t FindFeatures::StartOf(std::ptrdiff_t apex, double valley) const {
  const std::ptrdiff_t start = WalkLeft(curve_, apex, valley);
  for (auto f = features_.rbegin(); f != features_.rend() && f->end >= start; ++f)
    if (curve_.y[apex] <= Height(*f)) return f->end;
  return start;
}

// Walks right from the apex, past the end of the part if need be, sets the feature's end
// and moves p behind it.
bool FindFeatures::FollowToEnd(PeakFeature& feature, double valley, std::ptrdiff_t& p) const {
  const double* y = curve_.y;
  const std::ptrdiff_t last = curve_.n - 1;
  feature.end = feature.apex;
  if (feature.apex == last) return false;
  bool low = false;
  std::ptrdiff_t c = feature.apex;
  for (; c < last - 1; ++c) {
    low = low || y[c + 1] <= valley;
    const bool valleyBottom = low && y[c] < y[c + 2] && y[c] < y[c + 1];
    const bool atBaseline = !curve_.AboveBaseline(c + 1);
    const bool tallerNext = y[c] < y[c + 1] && y[c + 2] <= y[c + 1] && y[c + 1] > y[feature.apex];
    if (valleyBottom || atBaseline || tallerNext) {
      feature.end = atBaseline && !valleyBottom ? c + 1 : c;
      p = c + 1;
      return true;
    }
  }
  const bool falls = y[c] > y[c + 1];
  feature.end = falls ? c + 1 : c;
  p = c + 1;
  return !falls;
}

void FindFeatures::Join(const FindFeatures& right) {
  features_.insert(features_.end(), right.features_.begin(), right.features_.end());
}

// From right to left, since the later of two features has already yielded to an earlier one
// that is not lower. One that is swallowed no longer cuts others.
std::vector<PeakFeature> FindFeatures::Settled() const {
  std::vector<PeakFeature> kept;
  kept.reserve(features_.size());
  for (auto f = features_.rbegin(); f != features_.rend(); ++f) {
    const bool yields = !kept.empty() && f->end >= kept.back().start && Height(*f) < Height(kept.back());
    if (yields && f->apex >= kept.back().start) continue;
    const std::ptrdiff_t end = yields ? kept.back().start : f->end;
    kept.push_back({f->start, f->apex, end});
  }
  std::ranges::reverse(kept);
  return kept;
}

}  // namespace TslBL
