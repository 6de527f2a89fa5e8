#pragma once
// A bound on what the peaks of a stretch can reach: where it is below the limits in use, selection
// is certain to reject them all. Most features of a spectrum are ripples of its background: what is
// known to be rejected need not be described, nor even be found.

#include <tslbl/curve/Curve.h>
#include <cstddef>

namespace TslBL {

// Asks only the limits of amplitude, signal to noise and threshold. Where a limit is relative
// to the largest peak every peak counts, and nothing is rejected.
class RejectionBound {
 public:
  // Points are counted from `first`. Baseline and noise have a value for each point.
  explicit RejectionBound(const Curve& curve, std::size_t first = 0);

  // Whether no stretch at all is rejected.
  bool RejectsNothing() const { return rejectsNothing_; }

  // True only if selection would throw out every peak with its points among these, both
  // included, however its description comes out.
  bool RejectsAllBetween(std::ptrdiff_t first, std::ptrdiff_t last) const;

  // Whether a point as such passes, but for rounding: then it is not worth asking whether
  // a peak there is rejected.
  bool PassesAt(std::ptrdiff_t i) const {
    return y_[i] >= leastAmplitude_ && y_[i] - baseline_[i] >= leastRatio_ * noise_[i];
  }

 private:
  bool MayPass(double amplitude, double baseline, double noise) const;

  const double* y_;
  const double* baseline_;
  const double* noise_;
  double leastRatio_;
  double leastAmplitude_;
  bool rejectsNothing_;
};

}  // namespace TslBL
